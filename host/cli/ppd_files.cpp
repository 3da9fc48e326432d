#include "host/cli/ppd_files.h"

#include <algorithm>
#include <iostream>

#include "host/cli/printer_run.h"
#include "src/bindings/borderless_sizes.h"

namespace tintwerk {

namespace {

bool IsPpdName(std::string_view name)
{
    return std::ranges::any_of(std::initializer_list<std::string_view>{".ppd", ".ppd.gz"}, [&](auto ending) {
        return name.size() > ending.size() &&
               EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
    });
}

} // namespace

std::vector<std::string> PpdOperands(const Arguments& arguments, std::string_view command)
{
    std::vector<std::string> files;
    for (const std::string& operand : arguments.Operands()) {
        std::error_code ignored;
        if (operand == "-" || !std::filesystem::is_directory(PathFromUtf8(operand), ignored)) {
            files.push_back(operand);
            continue;
        }
        const std::size_t first = files.size();
        using Walk = std::filesystem::recursive_directory_iterator;
        const auto skip = std::filesystem::directory_options::skip_permission_denied;
        for (const auto& entry : Walk(PathFromUtf8(operand), skip)) {
            if (std::string name = Utf8FromPath(entry.path());
                IsPpdName(name) && !entry.is_directory(ignored))
                files.push_back(std::move(name));
        }
        std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end());
        if (files.size() == first) Fail(operand + ": there is no .ppd file below this folder");
    }
    if (std::ranges::count(files, "-") > 1) Misused("-: standard input can be read once");
    if (files.empty())
        Misused("no PPD file is given: tintwerk " + std::string(command) + " FILE|FOLDER|-...");
    return files;
}

PpdResult ReadPpdOperand(const std::string& operand, const PpdReadOptions& options)
{
    if (operand != "-") return ReadPpd(PathFromUtf8(operand), options);
    std::string text(kMaxPpdBytes + 1, '\0');
    std::cin.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::cin.gcount()));
    if (text.empty()) return {nullptr, {"-", 0, "standard input is empty"}};
    return ReadPpdText(std::move(text), "-", options);
}

} // namespace tintwerk
