// CvXmlWriter::writeMetaData: metadata.xml, a fixed skeleton of empty tag fields.
#include "documents/cvxmlwriter.h"

#include "documents/cvxmloutput.h"

namespace Halvorn {

namespace {

// No model object holds tag data, so every field stays empty.
constexpr const char8* kRoot = "MetaData";
constexpr const char8* kFields[] = {"Title",    "Artist", "Album", "OriginalArtist", "Songwriter",
                                    "Producer", "Year",   "Genre", "Copyright",      "Comment"};

} // namespace

bool CvXmlWriter::writeMetaData(FStream* stream) {
    if (!stream)
        return false;
    CvXmlOutput out(stream);
    if (!out.open())
        return false;
    out.start(kRoot);
    for (const char8* field : kFields) {
        out.start(field);
        out.end();
    }
    out.end();
    return out.close();
}

} // namespace Halvorn
