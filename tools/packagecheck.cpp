// The findings of `corvelle check`: the library's read, the archive's entries, the document.
#include "packagecheck.h"

#include "conventions.h"
#include "documentcheck.h"
#include "listing.h"
#include "packagereading.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <unordered_set>

namespace CorvelleTool {

namespace {

using namespace Halvorn;

// Above this a document is too large to hold for checking; the library itself refuses far
// smaller single tokens.
constexpr uint64_t kDocumentLimit = uint64_t(1) << 30;

// The most the document may inflate to here: no more than the library's own bound for a
// package of this size (100 times its size and 100 MiB), so that a small hostile package
// can't make the check hold what the read refused to write.
uint64_t documentLimit(const std::string& path) {
    std::error_code error;
    const uint64_t size = std::filesystem::file_size(path, error);
    return error ? 0 : std::min(kDocumentLimit, size * 100 + (uint64_t(100) << 20));
}

struct CaseCode {
    int32 what;
    Severity severity;
    const char* code;
};

constexpr CaseCode kCaseCodes[] = {
    {kReadRefusedPath, Severity::kWarning, "refused-path"},
    {kReadRefusedExternal, Severity::kWarning, "refused-external"},
    {kReadCopyFailed, Severity::kError, "copy-failed"},
    {kReadSkippedEntry, Severity::kWarning, "skipped-entry"},
    {kReadOverlappingEntry, Severity::kWarning, "overlapping-entry"},
    {kReadInflationLimit, Severity::kError, "inflation-limit"},
    {kReadExtractionFailed, Severity::kError, "extraction-failed"},
    {kReadDocumentTooLarge, Severity::kError, "document-too-large"},
};

Finding fromCase(const ReadCase& readCase) {
    for (const CaseCode& known : kCaseCodes)
        if (known.what == readCase.what)
            return {known.severity, known.code, readCase.subject, describe(readCase)};
    return {Severity::kWarning, "read-case", readCase.subject, describe(readCase)};
}

// A name that would lead out of the folder it is unpacked into.
bool escapes(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    if (name.empty() || name.front() == '/' || (name.size() > 1 && name[1] == ':'))
        return true;
    for (size_t start = 0; start <= name.size();) {
        const size_t end = std::min(name.find('/', start), name.size());
        if (name.compare(start, end - start, "..") == 0)
            return true;
        start = end + 1;
    }
    return false;
}

void checkArchive(const std::vector<ArchiveEntry>& entries, std::vector<Finding>& findings) {
    std::unordered_set<std::string> seen;
    for (const ArchiveEntry& entry : entries) {
        if (escapes(entry.name))
            findings.push_back({Severity::kWarning, "hostile-entry", entry.name,
                                "an entry whose name leads out of the package; never unpacked"});
        else if (!seen.insert(entry.name).second)
            findings.push_back({Severity::kWarning, "duplicate-entry", entry.name,
                                "an entry name used twice; only one of them is read"});
    }
}

void checkMedia(const std::vector<MediaReference>& media, const std::vector<ArchiveEntry>& entries,
                std::vector<Finding>& findings) {
    std::unordered_set<std::string> names;
    for (const ArchiveEntry& entry : entries)
        names.insert(entry.name);
    for (const MediaReference& reference : media) {
        if (reference.external)
            findings.push_back({Severity::kWarning, "external-reference", reference.place,
                                "\"" + reference.path + "\" lies outside the package"});
        // "plugins/" alone is the writer's State of a device without a state file.
        else if (!escapes(reference.path) && reference.path.back() != '/' &&
                 !names.count(reference.path))
            findings.push_back({Severity::kWarning, "missing-media", reference.place,
                                "\"" + reference.path + "\" is not in the package"});
    }
}

const char* severityText(Severity severity) {
    return severity == Severity::kError ? "error" : "warning";
}

void print(const std::string& path, const std::vector<Finding>& findings, bool json) {
    if (json) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const Finding& finding : findings)
            list.push_back({{"severity", severityText(finding.severity)},
                            {"code", finding.code},
                            {"place", finding.place},
                            {"message", finding.message}});
        const nlohmann::ordered_json out = {
            {"format", kJsonFormat}, {"package", path}, {"findings", list}};
        std::cout << out.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                  << "\n";
        return;
    }
    for (const Finding& finding : findings)
        std::cout << severityText(finding.severity) << " " << finding.code << " " << finding.place
                  << ": " << finding.message << "\n";
    if (findings.empty())
        std::cout << "ok\n";
}

} // namespace

int check(const std::string& path, bool json) {
    std::vector<Finding> findings;
    std::vector<ReadCase> cases;
    std::error_code error;
    const std::filesystem::path media = std::filesystem::temp_directory_path(error) / "media";
    const bool read = readPackage(path, error ? std::string() : media.string(), cases) != nullptr;
    for (const ReadCase& readCase : cases)
        findings.push_back(fromCase(readCase));
    // The archive and the document are walked even when the read failed: a malformed
    // document's line and column are the most useful finding there is.
    std::vector<ArchiveEntry> entries;
    std::string document;
    if (!read) {
        // Said on stderr too, as every command says a package it can't read.
        const std::string cause = lastFailure();
        std::cerr << "corvelle: " << path << ": " << cause << "\n";
        findings.push_back({Severity::kError, "unreadable", path, cause});
    }
    if (readArchiveEntries(path, entries) &&
        readArchiveEntry(path, "project.xml", documentLimit(path), document)) {
        checkArchive(entries, findings);
        DocumentCheck documentCheck = checkDocument(document);
        findings.insert(findings.end(), documentCheck.findings.begin(),
                        documentCheck.findings.end());
        checkMedia(documentCheck.media, entries, findings);
    } else if (read) {
        findings.push_back({Severity::kError, "unreadable", path,
                            "the library read it, but its archive or project.xml can't be "
                            "inflated here"});
    }
    print(path, findings, json);
    const auto isError = [](const Finding& finding) {
        return finding.severity == Severity::kError;
    };
    if (std::any_of(findings.begin(), findings.end(), isError))
        return kExitFailed;
    return findings.empty() ? kExitSuccess : kExitWarnings;
}

} // namespace CorvelleTool
