#include "platform/headless/registry_file.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/whole_file.h"

namespace tintwerk::headless {

namespace {

constexpr std::string_view kMachine = "HKEY_LOCAL_MACHINE";
constexpr std::string_view kUser = "HKEY_CURRENT_USER";

std::vector<BYTE> TextData(const std::string& text)
{
    std::vector<BYTE> data(text.begin(), text.end());
    data.push_back(0);
    return data;
}

// "41 42 00"
std::vector<BYTE> HexData(const std::string& text)
{
    std::vector<BYTE> data;
    const char* at = text.c_str();
    for (char* end = nullptr;; at = end) {
        const unsigned long byte = std::strtoul(at, &end, 16);
        if (end == at) return data;
        data.push_back(static_cast<BYTE>(byte));
    }
}

RegistryValue ParseValue(const std::string& kind, const std::string& text)
{
    if (kind == "expand") return {REG_EXPAND_SZ, TextData(text)};
    if (kind == "dword") {
        const unsigned long number = std::strtoul(text.c_str(), nullptr, 0);
        return {REG_DWORD,
                {static_cast<BYTE>(number), static_cast<BYTE>(number >> 8), static_cast<BYTE>(number >> 16),
                 static_cast<BYTE>(number >> 24)}};
    }
    if (kind.starts_with("hex"))
        return {kind.size() > 3 ? static_cast<DWORD>(std::strtoul(kind.c_str() + 3, nullptr, 10))
                                : REG_BINARY,
                HexData(text)};
    return {REG_SZ, TextData(text)};
}

std::string KeyPath(const std::string& name)
{
    return LiesIn(name, kUser) || LiesIn(name, kMachine) ? name : std::string(kMachine) + '\\' + name;
}

void ParseLine(RegistryContent& content, std::string& key, const std::string& line)
{
    if (line.starts_with('[') && line.ends_with(']')) {
        key = KeyPath(line.substr(1, line.size() - 2));
        AddKey(content, key);
        return;
    }
    const std::size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string::npos || key.empty()) return;
    std::string name = line.substr(0, equals), kind;
    if (const std::size_t colon = name.rfind(':'); colon != std::string::npos) {
        kind = name.substr(colon + 1);
        name.resize(colon);
    }
    content[key].insert_or_assign(name, ParseValue(kind, line.substr(equals + 1)));
}

bool IsPlainText(const std::vector<BYTE>& data)
{
    return !data.empty() && data.back() == 0 &&
           std::all_of(data.begin(), data.end() - 1, [](BYTE c) { return c >= ' '; });
}

void WriteValue(std::FILE* file, const std::string& name, const RegistryValue& value)
{
    if ((value.type == REG_SZ || value.type == REG_EXPAND_SZ) && IsPlainText(value.data)) {
        std::fprintf(file, "%s%s=%s\n", name.c_str(), value.type == REG_SZ ? "" : ":expand",
                     reinterpret_cast<const char*>(value.data.data()));
        return;
    }
    std::fprintf(file, "%s:hex%u=", name.c_str(), value.type);
    for (const BYTE byte : value.data)
        std::fprintf(file, "%02X ", byte);
    std::fputc('\n', file);
}

} // namespace

bool LiesIn(std::string_view path, std::string_view root)
{
    return lstrcmpiA(std::string(path.substr(0, root.size())).c_str(), std::string(root).c_str()) == 0 &&
           (path.size() == root.size() || path[root.size()] == '\\');
}

void AddKey(RegistryContent& content, const std::string& path)
{
    for (std::size_t end = path.find('\\'); end != std::string::npos;) {
        end = path.find('\\', end + 1);
        content.try_emplace(path.substr(0, end));
    }
}

RegistryContent ReadRegistryFile(const std::string& path)
{
    RegistryContent content;
    std::string key, line;
    std::vector<BYTE> bytes = ReadWholeFile(path.c_str());
    bytes.push_back('\n');
    for (const BYTE byte : bytes) {
        if (byte != '\n') {
            line += static_cast<char>(byte);
            continue;
        }
        if (line.ends_with('\r')) line.pop_back();
        ParseLine(content, key, line);
        line.clear();
    }
    return content;
}

bool WriteRegistryFile(const std::string& path, const RegistryContent& content)
{
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    for (const auto& [key, values] : content) {
        const bool below = LiesIn(key, kMachine) && key.size() > kMachine.size();
        std::fprintf(file, "[%s]\n", key.c_str() + (below ? kMachine.size() + 1 : 0));
        for (const auto& [name, value] : values)
            WriteValue(file, name, value);
        std::fputc('\n', file);
    }
    return std::fclose(file) == 0;
}

} // namespace tintwerk::headless
