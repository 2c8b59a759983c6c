// Plain file access for every test suite.
#include "testfiles.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace TestSupport {

ScopedVariable::ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name))
        old_ = old;
    value ? setenv(name, value, 1) : unsetenv(name);
}

ScopedVariable::~ScopedVariable() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

void writeFile(const std::string& path, const std::string& bytes) {
    std::error_code ignored;
    fs::create_directories(fs::path(path).parent_path(), ignored);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

std::vector<std::string> listTree(const std::string& root) {
    std::vector<std::string> names;
    std::error_code error;
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator(root, error); !error && it != fs::end(it);
         it.increment(error)) {
        std::string name = fs::relative(it->path(), root, ignored).generic_string();
        if (it->is_directory(ignored) && !it->is_symlink(ignored))
            name += "/";
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string runCommand(const std::string& command, int& status) {
    std::string output;
    status = -1;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return output;
    char buffer[4096];
    size_t got;
    while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        output.append(buffer, got);
    const int result = pclose(pipe);
    status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    return output;
}

} // namespace TestSupport
