// Checks of hostile session values: file kinds, parameter references, parser faults.
#include "sessionchecks.h"

#include <sys/stat.h>

namespace Halvorn {
namespace RefHost {

bool isRegularFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool parseParameterNumber(const std::string& reference, uint32& number) {
    if (reference.size() < 2 || reference[0] != '#' || reference.size() > 11)
        return false;
    uint64 value = 0;
    for (size_t i = 1; i < reference.size(); ++i) {
        const char digit = reference[i];
        if (digit < '0' || digit > '9')
            return false;
        value = value * 10 + uint64(digit - '0');
    }
    if (value > 0xFFFFFFFFull)
        return false;
    number = uint32(value);
    return true;
}

} // namespace RefHost
} // namespace Halvorn
