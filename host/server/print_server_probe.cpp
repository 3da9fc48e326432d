// tintwerk-print-server: a print server that only tells that it was started. Appends its working directory
// and its command line as one line to the file that TINTWERK_PRINT_SERVER_LOG names, or to print-server.log
// in its working directory.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

int main(int argc, char** argv)
{
    std::string line = std::filesystem::current_path().string() + " |";
    for (int i = 0; i < argc; ++i)
        line += std::string(" ") + argv[i];
    const char* const name = std::getenv("TINTWERK_PRINT_SERVER_LOG");
    std::FILE* const log = std::fopen(name ? name : "print-server.log", "ab");
    if (!log) return 1;
    std::fputs((line + "\n").c_str(), log);
    return std::fclose(log) == 0 ? 0 : 1;
}
