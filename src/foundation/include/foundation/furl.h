// FUrl: a path value, a file or a folder, with the free-name search for new files and folders.
#pragma once

#include "foundation/fobject.h"
#include "foundation/fstring.h"

#include <functional>

namespace Halvorn {

// The path is kept in "/" form: "\\" turns into "/" on the way in, and a trailing "/" is
// dropped (but for the root itself). Names compare as the file system does: case-sensitively.
// FUrl is a value: it may live on the stack, and a copy is a new object with count 1.
class FUrl : public FObject {
public:
    CV_DECLARE_TYPE(FUrl, FObject)

    enum SpecialFolder : int32 {
        kTemporaryFolder = 2, // $TMPDIR when set and non-empty, else /tmp
        kDocumentsFolder = 3, // $XDG_DOCUMENTS_DIR, else $HOME/Documents, else $HOME, else /
    };

    // Tells whether a path is free for a new file or folder.
    using FreeNameTest = std::function<bool(const String& path)>;

    FUrl() = default;
    FUrl(const String& path, bool isFolder);
    // name inside the special folder (and subFolder below it, when not empty). An empty name
    // means the folder itself. With create, the folder the url lies in is made (for a folder
    // url, the folder itself). An unknown code gives an empty url.
    FUrl(const String& name, int32 specialFolder, bool isFolder, const String& subFolder = {},
         bool create = false);
    FUrl(const FUrl& other);
    FUrl& operator=(const FUrl& other);
    ~FUrl() override = default;

    // Borrowed: valid while this url is unchanged. UTF-8, "/" separators.
    const String& getPath() const { return path_; }
    void getNativePath(String& path) const { path = path_; }
    bool isFolder() const { return isFolder_; }
    bool isEmpty() const { return path_.isEmpty(); }

    // The last component, extension included.
    String getName() const;
    // The name up to its last "." for a file; a folder's name whole. A name with a blank
    // behind its last ".", or whose only "." leads it (".profile"), has no extension.
    String getNameWithoutExtension() const;
    // The extension behind the last "." without the dot, or empty (same rules as above).
    String getExtension() const;
    // Everything before the last "/": "/" for an item at the root, empty for a bare name.
    String getFolderPath() const;

    // Finds a free name: the name itself, else the name with "-01", "-02"... behind its base.
    // Taken numbers are assumed to have no gaps (doubling, then bisection). Gives false, and
    // leaves the url empty, when the numbers run out or there is no name to number. Without a
    // test a path is free when nothing at all lies there.
    [[nodiscard]] bool makeUnique(const FreeNameTest& isFree = {});

private:
    void setPath(const String& path);
    // Byte offset in the path where the extension's "." stands, or the path's length.
    int32 extensionStart() const;

    String path_{""}; // always 8-bit, so the const getters never convert in place
    bool isFolder_ = false;
};

} // namespace Halvorn
