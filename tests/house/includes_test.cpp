// The house itself: includes run down the list of rooms only, and what differs between the platforms stays in
// platform/.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace tintwerk {
namespace {

namespace fs = std::filesystem;

// From the ground up; docs/architecture.md shows them in this order.
constexpr std::string_view kRooms[] = {
    "platform",     "src/resources", "src/trace",  "src/records", "src/bindings", "src/config", "src/i18n",
    "src/features", "src/ink",       "src/events", "src/pages",   "src/sheets",   "src/plugin", "host"};

// Number of the room that a path from the root lies in; that of no room when it lies in none.
std::size_t RoomOf(std::string_view path)
{
    return static_cast<std::size_t>(std::ranges::find_if(kRooms,
                                                         [path](std::string_view room) {
                                                             return path.starts_with(room) &&
                                                                    path.substr(room.size()).starts_with('/');
                                                         }) -
                                    std::begin(kRooms));
}

// Visits every line of the folders' sources with the path of its file from the root.
template <typename Visit> void ForEachLine(const std::vector<std::string>& folders, const Visit& visit)
{
    const fs::path root = TINTWERK_SOURCE_DIR;
    for (const std::string& folder : folders)
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / folder)) {
            if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
            const std::string path = fs::relative(entry.path(), root).generic_string();
            std::ifstream file(entry.path());
            for (std::string line; std::getline(file, line);)
                visit(path, line);
        }
}

// The file that a line includes; empty when it includes none.
std::string IncludedBy(std::string_view line)
{
    constexpr std::string_view kInclude = "#include ";
    if (!line.starts_with(kInclude)) return {};
    line.remove_prefix(kInclude.size());
    return std::string(line.substr(1, line.find_first_of("\">", 1) - 1));
}

TEST(House, IncludesRunDownTheListOfRooms)
{
    int followed = 0;
    ForEachLine({"platform", "src", "host"}, [&](const std::string& path, const std::string& line) {
        const std::string included = IncludedBy(line);
        if (included.find('/') == std::string::npos || !line.ends_with('"')) return;
        ++followed;
        EXPECT_NE(std::size(kRooms), RoomOf(path)) << path << " lies in no room";
        EXPECT_LE(RoomOf(included), RoomOf(path)) << path << " includes " << included;
        EXPECT_TRUE(fs::exists(fs::path(TINTWERK_SOURCE_DIR) / included)) << path << ": " << included;
    });
    EXPECT_LT(100, followed);
}

TEST(House, TheHostTakesTablesRecordsAndNamesFromThePlugin)
{
    const std::string_view allowed[] = {
        "src/bindings/",
        "src/config/registry_values.h",
        "src/ink/consumption_layout.h",
        "src/ink/ink_channels.h",
        "src/ink/ink_file.h",
        "src/records/options.h",
        "src/records/page_kinds.h",
        "src/resources/",
        "src/records/private_devmode.h",
        "src/sheets/layout_items.h",
        "src/sheets/advanced_texts.h",
        "src/sheets/page_list.h",
    };
    ForEachLine({"host"}, [&](const std::string& path, const std::string& line) {
        const std::string included = IncludedBy(line);
        EXPECT_TRUE(!included.starts_with("src/") ||
                    std::ranges::any_of(allowed, [&](auto name) { return included.starts_with(name); }))
            << path << " includes " << included;
    });
}

TEST(House, OneDoorLeadsToThePlatform)
{
    const char* const systemHeaders[] = {"windows.h",  "commctrl.h", "prsht.h",   "winspool.h", "compstui.h",
                                         "winddiui.h", "unknwn.h",   "objbase.h", "shlwapi.h",  "unistd.h"};
    ForEachLine(
        {"src", "host", "tests", "bench", "fuzz"}, [&](const std::string& path, const std::string& line) {
            // The headless platform's own tests and the tests' helpers may know which platform they stand on.
            if (path.starts_with("tests/support/") || path.starts_with("tests/headless/")) return;
            EXPECT_EQ(std::end(systemHeaders), std::ranges::find(systemHeaders, IncludedBy(line))) << path;
            EXPECT_FALSE(line.starts_with("#if") && line.find("WIN32") != std::string::npos) << path;
        });
}

} // namespace
} // namespace tintwerk
