// tintwerk devmode: shows the driver's private part of a DEVMODE, from a selections file or from raw bytes.
#include <algorithm>
#include <cstring>
#include <ostream>

#include "host/cli/json.h"
#include "host/cli/printer_run.h"
#include "host/cli/program.h"
#include "src/records/private_devmode.h"

namespace tintwerk {

namespace {

using Bytes = std::vector<unsigned char>;

// The record, where it is found: alone, or behind the public part of a whole DEVMODE.
const unsigned char* FindRecord(const Bytes& bytes)
{
    for (std::size_t at = 0; at + sizeof(OemPrivateDevmode) <= bytes.size(); at += sizeof(DWORD)) {
        OemPrivateDevmode record;
        std::memcpy(&record, bytes.data() + at, sizeof record);
        if (record.signature == kPluginSignature && record.size == sizeof record) return bytes.data() + at;
    }
    return bytes.size() == sizeof(OemPrivateDevmode) ? bytes.data()
                                                     : nullptr; // another plug-in's, or a damaged one
}

Bytes FromFile(const std::string& file)
{
    const std::string text = ContentOfFile(file);
    Bytes bytes(text.begin(), text.end());
    if (FindRecord(bytes)) return bytes;
    return Selections::FromText(file, text).PrivateDevmode();
}

// What a merge would put right.
std::vector<std::string> Oddities(const OemPrivateDevmode& record)
{
    std::vector<std::string> odd;
    if (record.signature != kPluginSignature)
        odd.push_back("the signature is another plug-in's: a merge starts from defaults");
    if (record.size != sizeof record) odd.push_back("the size is not " + std::to_string(sizeof record));
    if (record.version != kPluginVersion)
        odd.push_back("the version is not " + std::to_string(kPluginVersion));
    if (record.firstSetting > 100) odd.push_back("the first setting is above 100: a merge sets it to 0");
    if (record.secondSetting > 100) odd.push_back("the second setting is above 100: a merge sets it to 0");
    return odd;
}

std::string SignatureText(DWORD signature)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>(signature >> shift & 0xFF);
        text += c >= ' ' && c <= '~' ? c : '.';
    }
    return text;
}

int ShowDevmode(const Arguments& arguments, Output& output)
{
    const std::string& file = arguments.OneOperand("file");
    const Bytes bytes = FromFile(file);
    const unsigned char* const found = FindRecord(bytes);
    if (!found)
        throw CommandError(
            kExitFailed,
            file + ": holds no private DEVMODE part of this driver (a selections file, or a DEVMODE "
                   "as raw bytes, is expected)");
    OemPrivateDevmode record;
    std::memcpy(&record, found, sizeof record);
    const std::vector<std::string> odd = Oddities(record);
    Json json{{"command", "devmode"}, {"file", file}, {"offset", found - bytes.data()}};
    const Json fields{{"size", record.size},
                      {"signature", SignatureText(record.signature)},
                      {"version", record.version},
                      {"first_setting", record.firstSetting},
                      {"second_setting", record.secondSetting},
                      {"apply_count", record.applyCount}};
    if (arguments.Has("json")) {
        json.update(fields);
        json["remarks"] = odd;
        output.out << JsonText(json) << "\n";
        return kExitSuccess;
    }
    for (const auto& [name, value] : fields.items()) {
        std::string label = name;
        std::ranges::replace(label, '_', ' ');
        label.resize(16, ' ');
        output.out << label << (value.is_string() ? value.get<std::string>() : value.dump()) << "\n";
    }
    for (const std::string& text : odd)
        output.out << "remark: " << text << "\n";
    return kExitSuccess;
}

} // namespace

Command DevmodeCommand()
{
    return {"devmode",
            "shows the driver's private part of a DEVMODE",
            "tintwerk devmode FILE [--json]",
            "FILE is a selections file of the store, or a DEVMODE as raw bytes.\n",
            {{"json", "", "tells it as JSON"}},
            ShowDevmode};
}

} // namespace tintwerk
