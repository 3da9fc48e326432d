// Reads the PPDs named on the command line: errors and warnings as they come, a count at the end. See
// try_real_ppds.
#include <cstdio>

#include "host/ppd/ppd_reader.h"

int main(int count, char** files)
{
    int refused = 0;
    std::size_t warnings = 0;
    for (int at = 1; at < count; ++at) {
        const tintwerk::PpdResult result = tintwerk::ReadPpd(files[at]);
        if (!result) {
            ++refused;
            std::printf("error: %s\n", result.error.Full().c_str());
            continue;
        }
        for (const tintwerk::PpdMessage& warning : result.ppd->Warnings())
            std::printf("%s\n", warning.Full().c_str());
        warnings += result.ppd->Warnings().size();
    }
    std::printf("%d files, %d refused, %zu warnings\n", count - 1, refused, warnings);
    return refused != 0;
}
