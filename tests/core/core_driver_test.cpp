// The core driver stand-in as a plug-in meets it: lists, sizes, refusals, constraints, selections, DEVMODEs.
#include "host/core/core_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "host/ppd/ppd_reader.h"
#include "host/ppd/wide_text.h"
#include "platform/owners.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;

constexpr char kPrinter[] = R"(*PPD-Adobe: "4.3"
*LanguageEncoding: ISOLatin1
*NickName: "Test Printer"
*OpenUI *PageSize/Page Size: PickOne
*DefaultPageSize: A4
*PageSize A4/DIN A4: "<</PageSize[595 842]>>setpagedevice"
*PageSize Letter/US Letter: ""
*PageSize A3/DIN A3: ""
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: A4
*PageRegion A4: ""
*CloseUI: *PageRegion
*OpenUI *MediaType/Gr<f6df>e: PickOne
*DefaultMediaType: Plain
*MediaType Plain: ""
*MediaType Film/Film: ""
*MediaType Canvas: ""
*CloseUI: *MediaType
*OpenUI *Duplex/Two-sided: PickOne
*DefaultDuplex: None
*Duplex None/Off: ""
*Duplex DuplexNoTumble/Long Edge: ""
*Duplex DuplexTumble/Short Edge: ""
*CloseUI: *Duplex
*OpenGroup: InstallableOptions/Options
*OpenUI *Tray2/Second Tray: Boolean
*DefaultTray2: False
*Tray2 True/Yes: ""
*Tray2 False/No: ""
*CloseUI: *Tray2
*CloseGroup: InstallableOptions
*UIConstraints: *MediaType Film *Duplex
*UIConstraints: *PageSize A3 *MediaType Canvas
*UIConstraints: *PageSize A3 *Tray2 False
)";

constexpr DWORD kKeep = SETOPTIONS_FLAG_KEEP_CONFLICT, kResolve = SETOPTIONS_FLAG_RESOLVE_CONFLICT;

// "A4 Letter" as a core driver passes it: each with its zero, and one more.
std::string Request(const std::string& words)
{
    std::string list = words.empty() ? words : words + '\0';
    std::ranges::replace(list, ' ', '\0');
    return list + '\0';
}

// A printer of its own with the helpers that a plug-in would ask for.
class CoreDriverTest : public testing::Test
{
protected:
    CoreDriverTest() : printer(ReadPpdText(kPrinter, "test.ppd")), core(*printer.ppd, selections)
    {
        core.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(ui.Receive()));
        core.Helper()->QueryInterface(IID_IPrintCoreHelperPS, reinterpret_cast<void**>(ps.Receive()));
    }

    HRESULT Set(const std::string& pairs, DWORD flags, DWORD* outcome = nullptr)
    {
        DWORD result = 99;
        const std::string list = Request(pairs);
        const HRESULT status =
            ui->SetOptions(object, flags, list.data(), static_cast<DWORD>(list.size()), &result);
        if (outcome) *outcome = result;
        return status;
    }
    HRESULT GetOptions(const std::string& request, PSTR list, DWORD size, PDWORD needed)
    {
        return ui->GetOptions(object, 0, request.data(), static_cast<DWORD>(request.size()), list, size,
                              needed);
    }
    // A query that fills a buffer, as the call log writes it: "EnumOptions PageSize". Names that are not
    // given are null.
    HRESULT Ask(const std::string& call, PSTR list, DWORD size, PDWORD needed)
    {
        std::istringstream words(call);
        std::string method, names[3];
        words >> method >> names[0] >> names[1] >> names[2];
        const auto name = [&](int i) { return names[i].empty() ? nullptr : names[i].c_str(); };
        const auto bytes = reinterpret_cast<PBYTE>(list);
        if (method == "EnumFeatures") return ui->EnumFeatures(object, 0, list, size, needed);
        if (method == "EnumOptions") return ui->EnumOptions(object, 0, name(0), list, size, needed);
        if (method == "EnumConstrainedOptions")
            return ui->EnumConstrainedOptions(object, 0, name(0), list, size, needed);
        if (method == "WhyConstrained")
            return ui->WhyConstrained(object, 0, name(0), name(1), list, size, needed);
        if (method == "GetFeatureAttribute")
            return ui->GetFeatureAttribute(object, 0, name(0), name(1), &type, bytes, size, needed);
        if (method == "GetOptionAttribute")
            return ui->GetOptionAttribute(object, 0, name(0), name(1), name(2), &type, bytes, size, needed);
        return GetOptions(Request(call.substr(std::min(call.size(), method.size() + 1))), list, size, needed);
    }

    PpdResult printer;
    Selections selections;
    CoreDriver core;
    const POEMUIOBJ object = core.CoreObject();
    DWORD type = 0; // of the last attribute
    ComPtr<IPrintCoreUI2> ui;
    ComPtr<IPrintCoreHelperPS> ps;
};

TEST_F(CoreDriverTest, GivesWholeListsAndRefusesOneByteLess)
{
    const struct
    {
        std::string call, expected, told = {}; // what the log adds to the call
    } cases[] = {
        {"EnumFeatures", "PageSize MediaType Duplex Tray2 %Orientation %PageOrder %PagePerSheet"},
        {"EnumOptions PageSize", "A4 Letter A3"},
        {"EnumOptions %PagePerSheet", "1 2 4 6 9 16 Booklet"},
        {"GetOptions MediaType halvGuiMode Duplex", "MediaType Film Duplex None",
         ": MediaType=Film Duplex=None"}, // what the printer lacks is left out
        {"GetOptions ",
         "PageSize A4 MediaType Film Duplex None Tray2 False %Orientation Portrait %PageOrder FrontToBack "
         "%PagePerSheet 1",
         ": PageSize=A4 MediaType=Film Duplex=None Tray2=False %Orientation=Portrait %PageOrder=FrontToBack "
         "%PagePerSheet=1"},
        {"EnumConstrainedOptions Duplex", "DuplexNoTumble DuplexTumble", ": DuplexNoTumble DuplexTumble"},
        {"EnumConstrainedOptions PageSize", "A3", ": A3"}, // the second tray is missing
        {"EnumConstrainedOptions %PageOrder", "", ": "},
        {"WhyConstrained Duplex DuplexTumble", "MediaType Film", ": MediaType=Film"},
        {"GetFeatureAttribute MediaType DisplayName", "Gr\xC3\xB6\xC3\x9F"
                                                      "e"},
        {"GetOptionAttribute PageSize A4 DisplayName", "DIN A4"},
        {"GetOptionAttribute MediaType Plain DisplayName", "Plain"},
        {"GetOptionAttribute %Orientation RotatedLandscape DisplayName", "Rotated Landscape"},
    };
    ASSERT_EQ(S_OK, Set("MediaType Film", kKeep));
    core.Calls().Record(true);
    for (const auto& [call, text, told] : cases) {
        SCOPED_TRACE(call);
        const WideString name = WideFromUtf8(text) + WCHAR{0};
        const std::string expected =
            call.ends_with("DisplayName")
                ? std::string(reinterpret_cast<const char*>(name.data()), name.size() * sizeof(WCHAR))
                : Request(text);
        DWORD needed = 0;
        EXPECT_EQ(E_OUTOFMEMORY, Ask(call, nullptr, 0, &needed));
        EXPECT_EQ(expected.size(), needed);
        std::string list(expected.size(), '?');
        EXPECT_EQ(E_OUTOFMEMORY, Ask(call, list.data(), needed - 1, &needed));
        EXPECT_EQ(std::string(needed, '?'), list);
        EXPECT_EQ(S_OK, Ask(call, list.data(), needed, &needed));
        EXPECT_EQ(expected, list);
        EXPECT_EQ(call + told + " -> 0x00000000", core.Calls().Lines().back());
    }
    EXPECT_EQ(kADT_UNICODE, type);
    Set("MediaType Film", kKeep);
    EXPECT_EQ("SetOptions MediaType=Film -> 0x00000000", core.Calls().Lines().back());
    EXPECT_EQ(2u, core.Calls().Count(CoreMethod::SetOptions)) << "counted when nothing is recorded";
}

TEST_F(CoreDriverTest, RefusesWhatItDoesNotKnow)
{
    char buffer[256];
    DWORD needed = 0;
    for (const char* call : {"EnumOptions", "EnumOptions *PageSize", "EnumOptions pagesize",
                             "EnumOptions PageRegion", // chosen through PageSize only
                             "EnumConstrainedOptions Gloss", "GetOptions halvGuiMode",
                             "WhyConstrained Duplex Both", "GetFeatureAttribute Duplex Colour",
                             "GetFeatureAttribute Duplex", "GetOptionAttribute Duplex None Colour",
                             "GetOptionAttribute Duplex None", "GetOptionAttribute Duplex Both DisplayName"})
        EXPECT_EQ(E_INVALIDARG, Ask(call, buffer, sizeof buffer, &needed)) << call;
    const std::string list = Request("Duplex MediaType");
    for (const std::size_t missing : {1, 4}) // the list's end; half a keyword
        EXPECT_EQ(E_INVALIDARG,
                  GetOptions(list.substr(0, list.size() - missing), buffer, sizeof buffer, &needed));
    EXPECT_EQ(E_INVALIDARG, Ask("EnumFeatures", buffer, sizeof buffer, nullptr));
    for (const POEMUIOBJ foreign : {POEMUIOBJ{}, reinterpret_cast<POEMUIOBJ>(this)})
        EXPECT_EQ(E_INVALIDARG, ui->EnumOptions(foreign, 0, "PageSize", buffer, sizeof buffer, &needed));
    EXPECT_EQ(E_INVALIDARG, ui->EnumOptions(object, 1, "PageSize", buffer, sizeof buffer, &needed));
}

TEST_F(CoreDriverTest, KeepsOrResolvesConflictsAsAsked)
{
    const struct
    {
        const char* pairs;
        DWORD flags, outcome;
        const char *duplex, *media;
    } cases[] = {
        {"Duplex DuplexTumble %Orientation Landscape", kKeep, SETOPTIONS_RESULT_NO_CONFLICT, "DuplexTumble",
         "Plain"},
        {"MediaType Film", kKeep, SETOPTIONS_RESULT_CONFLICT_REMAINED, "DuplexTumble", "Film"},
        {"MediaType Film", kResolve, SETOPTIONS_RESULT_CONFLICT_RESOLVED, "None", "Film"},
        {"MediaType Film Duplex DuplexTumble", kResolve, SETOPTIONS_RESULT_CONFLICT_REMAINED, "DuplexTumble",
         "Film"}, // both were asked for
    };
    for (const auto& row : cases) {
        DWORD outcome = 0;
        EXPECT_EQ(S_OK, Set(row.pairs, row.flags, &outcome));
        EXPECT_EQ(row.outcome, outcome);
        EXPECT_EQ(row.duplex, core.Selected("Duplex"));
        EXPECT_EQ(row.media, core.Selected("MediaType"));
    }
    EXPECT_EQ("Landscape", core.Selected("%Orientation"));
    EXPECT_EQ(1u, core.Conflicts());
}

TEST_F(CoreDriverTest, ChangesNothingWhenOnePairIsWrong)
{
    for (const char* pairs : {"Duplex DuplexTumble MediaType Glass", "Duplex DuplexTumble Gloss High",
                              "Duplex DuplexTumble MediaType", "Duplex DuplexTumble *MediaType Film"}) {
        EXPECT_EQ(E_INVALIDARG, Set(pairs, kKeep)) << pairs;
        EXPECT_EQ("None", core.Selected("Duplex")) << pairs;
    }
    EXPECT_EQ(E_INVALIDARG, Set("Duplex DuplexTumble", 0));
    EXPECT_EQ(nullptr, selections.Find("Duplex"));
}

// Calls behind the driver's end are refused.
TEST_F(CoreDriverTest, IsOneObjectWithTwoInterfaces)
{
    void* other = this;
    EXPECT_EQ(E_NOINTERFACE, ui->QueryInterface(IID_IPrintOemUI2, &other));
    EXPECT_EQ(nullptr, other);
    auto brief = std::make_unique<CoreDriver>(*printer.ppd, selections);
    const POEMUIOBJ gone = brief->CoreObject();
    ui = {};
    brief->Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(ui.Receive()));
    brief.reset();
    DWORD needed = 0;
    EXPECT_EQ(E_UNEXPECTED, ui->EnumFeatures(gone, 0, nullptr, 0, &needed));
}

TEST_F(CoreDriverTest, AnswersFromTheSelectionsOfAJob)
{
    ASSERT_EQ(S_OK, Set("MediaType Canvas %Orientation RotatedLandscape Duplex DuplexTumble", kKeep));
    const BYTE pluginPart[24] = {24, 0, 0, 0, 'V', 'L', 'A', 'H'};
    std::vector<BYTE> bytes = core.MakeDevmode(TEXT("Printer"), pluginPart);
    auto* devmode = reinterpret_cast<DEVMODEW*>(bytes.data());
    const DWORD size = static_cast<DWORD>(bytes.size());
    ASSERT_EQ(size, DWORD{devmode->dmSize} + devmode->dmDriverExtra);
    EXPECT_EQ(DMORIENT_LANDSCAPE, devmode->dmOrientation);
    EXPECT_EQ(DMDUP_HORIZONTAL, devmode->dmDuplex);
    EXPECT_TRUE(std::ranges::equal(pluginPart, std::span(bytes).last(sizeof pluginPart)));
    ASSERT_TRUE(core.Select("MediaType", "Plain"));
    PCSTR option = nullptr;
    EXPECT_EQ(S_OK, ps->GetOption(devmode, size, "MediaType", &option));
    EXPECT_STREQ("Canvas", option) << "the job keeps its settings";
}

TEST_F(CoreDriverTest, RefusesDevmodesThatAreNotItsOwn)
{
    const std::vector<BYTE> good = core.MakeDevmode(TEXT("Printer"), {});
    PCSTR option = nullptr;
    const auto ask = [&](std::vector<BYTE> bytes, std::size_t size, PCSTR feature = "MediaType") {
        return ps->GetOption(reinterpret_cast<DEVMODEW*>(bytes.data()), static_cast<DWORD>(size), feature,
                             &option);
    };
    EXPECT_EQ(S_OK, ask(good, good.size()));
    EXPECT_EQ(E_INVALIDARG, ask(good, good.size() - 1));
    EXPECT_EQ(E_INVALIDARG, ask({}, 0));
    EXPECT_EQ(E_INVALIDARG, ask(good, good.size(), "Gloss"));
    for (std::size_t at = sizeof(DEVMODEW); at < sizeof(DEVMODEW) + 24; at += 4) {
        std::vector<BYTE> bad = good;
        bad[at] ^= 1;
        EXPECT_EQ(E_INVALIDARG, ask(bad, bad.size())) << at;
    }
    std::vector<BYTE> plain(sizeof(DEVMODEW));
    reinterpret_cast<DEVMODEW*>(plain.data())->dmSize = sizeof(DEVMODEW);
    EXPECT_EQ(E_INVALIDARG, ask(plain, plain.size()));
}

} // namespace
} // namespace tintwerk
