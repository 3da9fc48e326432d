// The core driver stand-in as a plug-in meets it: lists, sizes, refusals, constraints, selections, DEVMODEs.
#include "host/core/core_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/ppd/ppd_reader.h"
#include "platform/owners.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using List = std::vector<std::string>;

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

// A printer of its own with the helpers that a plug-in would ask for.
class CoreDriverTest : public testing::Test
{
protected:
    CoreDriverTest() : printer(ReadPpdText(kPrinter, "test.ppd")), core(*printer.ppd, selections)
    {
        core.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(ui.Receive()));
        core.Helper()->QueryInterface(IID_IPrintCoreHelperPS, reinterpret_cast<void**>(ps.Receive()));
    }

    static std::string Request(const List& keywords)
    {
        std::string list;
        for (const std::string& keyword : keywords)
            list.append(keyword).append(1, '\0');
        return list.append(1, '\0');
    }
    static List Parse(const std::string& list)
    {
        List keywords;
        for (std::size_t at = 0; at < list.size() && list[at]; at += keywords.back().size() + 1)
            keywords.push_back(list.c_str() + at);
        return keywords;
    }

    HRESULT Set(const List& pairs, DWORD flags, DWORD* outcome = nullptr)
    {
        DWORD result = 99;
        const std::string list = Request(pairs);
        const HRESULT status =
            ui->SetOptions(core.CoreObject(), flags, list.data(), static_cast<DWORD>(list.size()), &result);
        if (outcome) *outcome = result;
        return status;
    }
    List Constrained(const char* feature)
    {
        char buffer[256];
        DWORD needed = 0;
        EXPECT_EQ(S_OK,
                  ui->EnumConstrainedOptions(core.CoreObject(), 0, feature, buffer, sizeof buffer, &needed));
        return Parse(std::string(buffer, needed));
    }

    PpdResult printer;
    Selections selections;
    CoreDriver core;
    ComPtr<IPrintCoreUI2> ui;
    ComPtr<IPrintCoreHelperPS> ps;
};

// Every query that fills a buffer, with what it must give.
TEST_F(CoreDriverTest, GivesWholeListsAndRefusesOneByteLess)
{
    const POEMUIOBJ object = core.CoreObject();
    const std::string request = Request({"MediaType", "Duplex"});
    const DWORD requestSize = static_cast<DWORD>(request.size());
    ASSERT_EQ(S_OK, Set({"MediaType", "Film"}, SETOPTIONS_FLAG_KEEP_CONFLICT));
    struct Case
    {
        const char* name;
        std::function<HRESULT(PSTR, DWORD, PDWORD)> query;
        List expected;
    };
    const Case cases[] = {
        {"features",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->EnumFeatures(object, 0, list, size, needed);
         },
         {"PageSize", "MediaType", "Duplex", "Tray2", "%Orientation", "%PageOrder", "%PagePerSheet"}},
        {"options",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->EnumOptions(object, 0, "PageSize", list, size, needed);
         },
         {"A4", "Letter", "A3"}},
        {"own options",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->EnumOptions(object, 0, "%PagePerSheet", list, size, needed);
         },
         {"1", "2", "4", "6", "9", "16", "Booklet"}},
        {"selections",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->GetOptions(object, 0, request.data(), requestSize, list, size, needed);
         },
         {"MediaType", "Film", "Duplex", "None"}},
        {"all selections",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->GetOptions(object, 0, "", 1, list, size, needed);
         },
         {"PageSize", "A4", "MediaType", "Film", "Duplex", "None", "Tray2", "False", "%Orientation",
          "Portrait", "%PageOrder", "FrontToBack", "%PagePerSheet", "1"}},
        {"constrained",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->EnumConstrainedOptions(object, 0, "Duplex", list, size, needed);
         },
         {"DuplexNoTumble", "DuplexTumble"}},
        {"nothing constrained",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->EnumConstrainedOptions(object, 0, "%PageOrder", list, size, needed);
         },
         {}},
        {"reasons",
         [&](PSTR list, DWORD size, PDWORD needed) {
             return ui->WhyConstrained(object, 0, "Duplex", "DuplexTumble", list, size, needed);
         },
         {"MediaType", "Film"}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const std::string expected = Request(row.expected);
        DWORD needed = 0;
        EXPECT_EQ(E_OUTOFMEMORY, row.query(nullptr, 0, &needed));
        EXPECT_EQ(expected.size(), needed);
        needed = 0;
        std::string tooSmall(expected.size() - 1, '?');
        EXPECT_EQ(E_OUTOFMEMORY, row.query(tooSmall.data(), static_cast<DWORD>(tooSmall.size()), &needed));
        EXPECT_EQ(expected.size(), needed);
        EXPECT_EQ(std::string(tooSmall.size(), '?'), tooSmall);
        std::string exact(expected.size(), '?');
        EXPECT_EQ(S_OK, row.query(exact.data(), static_cast<DWORD>(exact.size()), &needed));
        EXPECT_EQ(expected, exact);
    }
}

TEST_F(CoreDriverTest, RefusesWhatItDoesNotKnow)
{
    const POEMUIOBJ object = core.CoreObject();
    const POEMUIOBJ foreign = reinterpret_cast<POEMUIOBJ>(this);
    char buffer[256];
    DWORD needed = 0;
    DWORD type = 0;
    const auto bytes = reinterpret_cast<PBYTE>(buffer);
    const auto options = [&](const char* feature, POEMUIOBJ owner, DWORD flags) {
        return ui->EnumOptions(owner, flags, feature, buffer, sizeof buffer, &needed);
    };
    const auto selected = [&](const std::string& list, std::size_t size) {
        return ui->GetOptions(object, 0, list.data(), static_cast<DWORD>(size), buffer, sizeof buffer,
                              &needed);
    };
    EXPECT_EQ(S_OK, options("PageSize", object, 0));
    EXPECT_EQ(E_INVALIDARG, options("PageSize", foreign, 0));
    EXPECT_EQ(E_INVALIDARG, options("PageSize", nullptr, 0));
    EXPECT_EQ(E_INVALIDARG, options("PageSize", object, 1));
    EXPECT_EQ(E_INVALIDARG, options("*PageSize", object, 0));
    EXPECT_EQ(E_INVALIDARG, options("pagesize", object, 0));
    EXPECT_EQ(E_INVALIDARG, options("PageRegion", object, 0)) << "chosen through PageSize only";
    EXPECT_EQ(E_INVALIDARG, options(nullptr, object, 0));
    EXPECT_EQ(E_INVALIDARG, ui->EnumFeatures(object, 0, buffer, sizeof buffer, nullptr));

    const std::string unknown = Request({"halvGuiMode"});
    EXPECT_EQ(E_INVALIDARG, selected(unknown, unknown.size()));
    const std::string some = Request({"halvGuiMode", "Duplex"});
    EXPECT_EQ(S_OK, selected(some, some.size())) << "what the printer lacks is left out";
    EXPECT_EQ(Request({"Duplex", "None"}), std::string(buffer, needed));
    EXPECT_EQ(E_INVALIDARG, selected(some, some.size() - 1)) << "not closed";
    EXPECT_EQ(E_INVALIDARG, selected(some, some.size() - 4)) << "cut inside a keyword";

    EXPECT_EQ(E_INVALIDARG, ui->WhyConstrained(object, 0, "Duplex", "Both", buffer, sizeof buffer, &needed));
    EXPECT_EQ(E_INVALIDARG,
              ui->GetFeatureAttribute(object, 0, "Duplex", "Colour", &type, bytes, sizeof buffer, &needed));
    EXPECT_EQ(E_INVALIDARG, ui->GetOptionAttribute(object, 0, "Duplex", "Both", "DisplayName", &type, bytes,
                                                   sizeof buffer, &needed));
    EXPECT_EQ(E_INVALIDARG, ui->GetOptionAttribute(object, 0, "Duplex", "None", "Colour", &type, bytes,
                                                   sizeof buffer, &needed));
}

TEST_F(CoreDriverTest, NamesFeaturesAndOptions)
{
    struct
    {
        const char* feature;
        const char* option; // null: the feature's own name
        WideString name;
    } cases[] = {
        {"MediaType", nullptr, TEXT("Gr\u00F6\u00DFe")},
        {"PageSize", "A4", TEXT("DIN A4")},
        {"MediaType", "Plain", TEXT("Plain")},
        {"%Orientation", "RotatedLandscape", TEXT("Rotated Landscape")},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.feature);
        const WideString name = row.name + WCHAR{0};
        const DWORD size = static_cast<DWORD>(name.size() * sizeof(WCHAR));
        DWORD type = 99;
        DWORD needed = 0;
        std::vector<BYTE> value(size);
        const auto ask = [&](DWORD room) {
            return row.option ? ui->GetOptionAttribute(core.CoreObject(), 0, row.feature, row.option,
                                                       "DisplayName", &type, value.data(), room, &needed)
                              : ui->GetFeatureAttribute(core.CoreObject(), 0, row.feature, "DisplayName",
                                                        &type, value.data(), room, &needed);
        };
        EXPECT_EQ(E_OUTOFMEMORY, ask(size - 1));
        EXPECT_EQ(size, needed);
        EXPECT_EQ(S_OK, ask(size));
        EXPECT_EQ(kADT_UNICODE, type);
        EXPECT_EQ(0, std::memcmp(name.data(), value.data(), size));
    }
}

TEST_F(CoreDriverTest, KeepsOrResolvesConflictsAsAsked)
{
    DWORD outcome = 0;
    EXPECT_EQ(S_OK, Set({"Duplex", "DuplexTumble", "%Orientation", "Landscape"},
                        SETOPTIONS_FLAG_KEEP_CONFLICT, &outcome));
    EXPECT_EQ(SETOPTIONS_RESULT_NO_CONFLICT, outcome);
    EXPECT_EQ("DuplexTumble", core.Selected("Duplex"));
    EXPECT_EQ("Landscape", core.Selected("%Orientation"));

    EXPECT_EQ(S_OK, Set({"MediaType", "Film"}, SETOPTIONS_FLAG_KEEP_CONFLICT, &outcome));
    EXPECT_EQ(SETOPTIONS_RESULT_CONFLICT_REMAINED, outcome);
    EXPECT_EQ("DuplexTumble", core.Selected("Duplex"));
    EXPECT_THAT(core.Conflicts(),
                ElementsAre(std::pair<std::string, std::string>("MediaType Film", "Duplex DuplexTumble")));

    EXPECT_EQ(S_OK, Set({"MediaType", "Film"}, SETOPTIONS_FLAG_RESOLVE_CONFLICT, &outcome));
    EXPECT_EQ(SETOPTIONS_RESULT_CONFLICT_RESOLVED, outcome);
    EXPECT_EQ("None", core.Selected("Duplex"));
    EXPECT_EQ("Film", core.Selected("MediaType"));

    EXPECT_EQ(S_OK, Set({"MediaType", "Film", "Duplex", "DuplexTumble"}, SETOPTIONS_FLAG_RESOLVE_CONFLICT,
                        &outcome));
    EXPECT_EQ(SETOPTIONS_RESULT_CONFLICT_REMAINED, outcome) << "both were asked for";
}

TEST_F(CoreDriverTest, ChangesNothingWhenOnePairIsWrong)
{
    const List wrong[] = {{"Duplex", "DuplexTumble", "MediaType", "Glass"},
                          {"Duplex", "DuplexTumble", "Gloss", "High"},
                          {"Duplex", "DuplexTumble", "MediaType"},
                          {"Duplex", "DuplexTumble", "*MediaType", "Film"}};
    for (const List& pairs : wrong) {
        EXPECT_EQ(E_INVALIDARG, Set(pairs, SETOPTIONS_FLAG_KEEP_CONFLICT)) << pairs.back();
        EXPECT_EQ("None", core.Selected("Duplex")) << pairs.back();
    }
    EXPECT_EQ(E_INVALIDARG, Set({"Duplex", "DuplexTumble"}, 0));
    EXPECT_EQ(nullptr, selections.Find("Duplex"));
}

TEST_F(CoreDriverTest, SeesConstraintsFromBothSides)
{
    EXPECT_THAT(Constrained("Duplex"), IsEmpty());
    EXPECT_THAT(Constrained("PageSize"), ElementsAre("A3")) << "the second tray is missing";
    ASSERT_EQ(S_OK, Set({"Duplex", "DuplexTumble", "Tray2", "True", "PageSize", "A3"},
                        SETOPTIONS_FLAG_KEEP_CONFLICT));
    EXPECT_THAT(Constrained("MediaType"), ElementsAre("Film", "Canvas"));
    EXPECT_THAT(Constrained("Tray2"), ElementsAre("False"));
    ASSERT_EQ(S_OK,
              Set({"Duplex", "None", "PageSize", "A4", "MediaType", "Film"}, SETOPTIONS_FLAG_KEEP_CONFLICT));
    EXPECT_THAT(Constrained("MediaType"), IsEmpty());
    EXPECT_THAT(Constrained("Duplex"), ElementsAre("DuplexNoTumble", "DuplexTumble"));
}

TEST_F(CoreDriverTest, IsOneObjectWithTwoInterfaces)
{
    EXPECT_EQ(2u, core.OutstandingReferences());
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    EXPECT_EQ(S_OK, ui->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(first.Receive())));
    EXPECT_EQ(S_OK, ps->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(second.Receive())));
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(4u, core.OutstandingReferences());
    void* other = this;
    EXPECT_EQ(E_NOINTERFACE, ui->QueryInterface(IID_IPrintOemUI2, &other));
    EXPECT_EQ(nullptr, other);
}

TEST_F(CoreDriverTest, RefusesCallsAfterItsEnd)
{
    ComPtr<IPrintCoreUI2> held;
    POEMUIOBJ object;
    {
        CoreDriver brief(*printer.ppd, selections);
        object = brief.CoreObject();
        brief.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(held.Receive()));
    }
    char buffer[64];
    DWORD needed = 0;
    EXPECT_EQ(E_UNEXPECTED, held->EnumFeatures(object, 0, buffer, sizeof buffer, &needed));
}

TEST_F(CoreDriverTest, AnswersFromTheSelectionsOfAJob)
{
    ASSERT_TRUE(core.Select("MediaType", "Canvas"));
    ASSERT_TRUE(core.Select("%Orientation", "RotatedLandscape"));
    ASSERT_TRUE(core.Select("Duplex", "DuplexTumble"));
    const BYTE pluginPart[24] = {24, 0, 0, 0, 'V', 'L', 'A', 'H'};
    std::vector<BYTE> bytes = core.MakeDevmode(TEXT("Printer"), pluginPart);
    auto* devmode = reinterpret_cast<DEVMODEW*>(bytes.data());
    const DWORD size = static_cast<DWORD>(bytes.size());
    ASSERT_EQ(size, DWORD{devmode->dmSize} + devmode->dmDriverExtra);
    EXPECT_EQ(DMORIENT_LANDSCAPE, devmode->dmOrientation);
    EXPECT_EQ(DMDUP_HORIZONTAL, devmode->dmDuplex);
    ASSERT_EQ(24u, core.PluginPart(devmode, size).size());
    EXPECT_EQ(0, std::memcmp(pluginPart, core.PluginPart(devmode, size).data(), 24));

    ASSERT_TRUE(core.Select("MediaType", "Plain"));
    PCSTR option = nullptr;
    EXPECT_EQ(S_OK, ps->GetOption(devmode, size, "MediaType", &option));
    EXPECT_STREQ("Canvas", option) << "the job keeps its settings";
}

TEST_F(CoreDriverTest, RefusesDevmodesThatAreNotItsOwn)
{
    std::vector<BYTE> good = core.MakeDevmode(TEXT("Printer"), {});
    PCSTR option = nullptr;
    const auto ask = [&](std::vector<BYTE>& bytes, std::size_t size) {
        return ps->GetOption(reinterpret_cast<DEVMODEW*>(bytes.data()), static_cast<DWORD>(size), "MediaType",
                             &option);
    };
    ASSERT_EQ(S_OK, ask(good, good.size()));
    EXPECT_EQ(E_INVALIDARG, ask(good, good.size() - 1));
    EXPECT_EQ(E_INVALIDARG, ps->GetOption(nullptr, 0, "MediaType", &option));
    EXPECT_EQ(E_INVALIDARG, ps->GetOption(reinterpret_cast<DEVMODEW*>(good.data()),
                                          static_cast<DWORD>(good.size()), "Gloss", &option));
    for (std::size_t at = sizeof(DEVMODEW); at < sizeof(DEVMODEW) + 24; at += 4) {
        std::vector<BYTE> bad = good;
        bad[at] ^= 1;
        EXPECT_EQ(E_INVALIDARG, ask(bad, bad.size())) << at;
    }
    std::vector<BYTE> plain(sizeof(DEVMODEW));
    reinterpret_cast<DEVMODEW*>(plain.data())->dmSize = sizeof(DEVMODEW);
    EXPECT_EQ(E_INVALIDARG, ask(plain, plain.size()));
}

TEST_F(CoreDriverTest, HandsOutPointerArraysThatLast)
{
    PCSTR* options = nullptr;
    DWORD count = 0;
    ASSERT_EQ(S_OK, ps->EnumOptions("MediaType", &options, &count));
    EXPECT_THAT(List(options, options + count), ElementsAre("Plain", "Film", "Canvas"));
    EXPECT_EQ(E_INVALIDARG, ps->EnumOptions("Gloss", &options, &count));
}

TEST_F(CoreDriverTest, RecordsCallsOnDemand)
{
    Set({"Duplex", "None"}, SETOPTIONS_FLAG_KEEP_CONFLICT);
    core.Calls().Record(true);
    Set({"MediaType", "Film"}, SETOPTIONS_FLAG_KEEP_CONFLICT);
    Constrained("Duplex");
    EXPECT_EQ(2u, core.Calls().Count(CoreMethod::SetOptions));
    EXPECT_EQ(3u, core.Calls().Total());
    EXPECT_THAT(core.Calls().Lines(),
                ElementsAre("SetOptions MediaType=Film -> 0x00000000",
                            "EnumConstrainedOptions Duplex: DuplexNoTumble DuplexTumble -> 0x00000000"));
}

TEST_F(CoreDriverTest, TellsWhichStoredSelectionsItCannotUse)
{
    Selections stored;
    stored.Set("MediaType", "Canvas");
    stored.Set("Duplex", "Both");
    stored.Set("Gloss", "High");
    CoreDriver restored(*printer.ppd, stored);
    EXPECT_EQ("Canvas", restored.Selected("MediaType"));
    EXPECT_EQ("None", restored.Selected("Duplex"));
    EXPECT_THAT(restored.Refused(), ElementsAre("Duplex=Both: the feature has no such option",
                                                "Gloss=High: the printer has no such feature"));
    EXPECT_EQ("High", *stored.Find("Gloss"));
}

} // namespace
} // namespace tintwerk
