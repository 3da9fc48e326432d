#include "platform/console.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

#include "platform/win32.h"
#include <shellapi.h>

namespace tintwerk {

std::vector<std::string> ProgramArguments(int argc, char** argv)
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> arguments;
    int count = 0;
    LPWSTR* const texts = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!texts) return {argv + 1, argv + argc};
    for (int i = 1; i < count; ++i) {
        const int bytes = WideCharToMultiByte(CP_UTF8, 0, texts[i], -1, nullptr, 0, nullptr, nullptr);
        std::string argument(bytes > 0 ? bytes - 1 : 0, '\0');
        if (bytes > 1)
            WideCharToMultiByte(CP_UTF8, 0, texts[i], -1, argument.data(), bytes, nullptr, nullptr);
        arguments.push_back(argument);
    }
    LocalFree(texts);
    return arguments;
}

bool OutputIsTerminal()
{
    return _isatty(_fileno(stdout)) != 0;
}

bool ErrorIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool WindowsAreVisible()
{
    return GetEnvironmentVariableA("TINTWERK_VIRTUAL_DISPLAY", nullptr, 0) == 0;
}

} // namespace tintwerk
