// Where the platform keeps the temporary folder and the user's documents.
#pragma once

#include "foundation/fstring.h"

namespace Halvorn {

// $TMPDIR when set and non-empty, else "/tmp"; "/" form without a trailing "/".
String getTemporaryFolderPath();
// $XDG_DOCUMENTS_DIR when set and non-empty, else $HOME/Documents when that folder exists,
// else $HOME, else "/"; "/" form without a trailing "/".
String getDocumentsFolderPath();

} // namespace Halvorn
