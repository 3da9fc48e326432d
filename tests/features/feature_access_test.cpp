// One feature at a time: the bytes of the requests, the trace, what an option keyword stands for, and lists
// that lie about themselves.
#include "src/features/feature_access.h"

#include "src/features/keyword_list.h"
#include <tuple>

#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

TEST(KeywordLists, EndAtTheClosingZeroOrAtTheLastByteGiven)
{
    // clang-format off
    const struct { std::string bytes; Strings keywords; Strings pairs; } cases[] = {
        {List({"A4", "Letter", "A3"}), {"A4", "Letter", "A3"}, {"A4=Letter"}},
        {List({"A", "B", "C", "D"}) + "beyond" + '\0', {"A", "B", "C", "D"}, {"A=B", "C=D"}},
        {std::string("A\0B\0C", 5), {"A", "B"}, {"A=B"}}, {std::string("A\0B\0", 4), {"A", "B"}, {"A=B"}},
        {"unterminated", {}, {}}, {std::string(1, '\0'), {}, {}}, {"", {}, {}},
    };
    // clang-format on
    for (const auto& row : cases) {
        // Its own block, so that a sanitizer sees the first byte read beyond it.
        const std::vector<char> bytes(row.bytes.begin(), row.bytes.end());
        Strings keywords, pairs;
        for (const char* keyword : KeywordList(bytes.data(), bytes.size()))
            keywords.push_back(keyword);
        for (const auto [feature, option] : PairList(bytes.data(), bytes.size()))
            pairs.push_back(std::string(feature) + "=" + option);
        EXPECT_EQ(row.keywords, keywords) << row.bytes;
        EXPECT_EQ(row.pairs, pairs) << row.bytes;
    }
}

TEST_F(FeatureTest, SettingAnOptionSendsOnePairAndKeepsConflictingSelections)
{
    core.Offer("MediaType", "Photo220 Glossy22", "Photo220");
    EXPECT_EQ(0, SetOption(context, "*MediaType", "Glossy22"));
    EXPECT_EQ(E_INVALIDARG, SetOption(context, "halvGone", "1"));
    EXPECT_EQ((Strings{"SetOptions MediaType|Glossy22||", "SetOptions halvGone|1||"}), core.calls);
    EXPECT_EQ("", Missing({"SetOption 'MediaType'='Glossy22' result = 0\n",
                           "SetOption 'halvGone'='1' result = -2147024809\n"}));
    EXPECT_EQ(E_INVALIDARG, SetOption(context, "*halvX", std::string(503, 'o').c_str()));
    EXPECT_EQ(-1, SetOption(context, "*halvX", std::string(504, 'o').c_str()));
    EXPECT_EQ(3, core.Count("SetOptions")) << "what does not fit is not sent";
}

TEST_F(FeatureTest, ReadingAFeatureAsksOnce)
{
    core.Offer("PageSize", "A4 Letter", "Letter");
    std::string option(12, 'x');
    int value = 77;
    EXPECT_EQ(S_OK, getPPDOptionSV(context, "PageSize", &value, option.data(), 4));
    EXPECT_EQ(std::string("Let\0xxxxxxxx", 12), option);
    EXPECT_EQ(S_OK, getPPDOptionSV(context, "PageSize", &value, option.data(), 12));
    EXPECT_EQ(E_FAIL, getPPDOptionSV(context, "halvGone", &value, option.data(), 12));
    EXPECT_EQ(std::string("Letter\0\0\0\0\0\0", 12), option);
    EXPECT_EQ(77, value);
    EXPECT_EQ(
        (Strings{"GetOptions PageSize|| 1024", "GetOptions PageSize|| 1024", "GetOptions halvGone|| 1024"}),
        core.calls);
    EXPECT_EQ("", Missing({"Result=OK\n", "UI:  PPDOptionGetVal of 'PageSize' is Letter\r\n", "Result=OK\n",
                           "UI:  getPPDOptionSV failed with result = 80070057\n"}));
}

TEST_F(FeatureTest, OptionKeywordsStandForNumbers)
{
    // clang-format off
    const struct { const char* option; HRESULT result; int value; } cases[] = {
        {"preview-on", S_OK, 1}, {"preview-off", S_OK, 0}, {"-on-off", S_OK, 0}, {"a-only", S_OK, 1},
        {"-15", S_OK, -15}, {"+7", S_OK, 7}, {" 12", S_OK, 12}, {"\t12", S_OK, 12}, {"12dpi", S_OK, 12},
        {"007", S_OK, 7}, {"2147483647", S_OK, 2147483647}, {"2147483648", S_OK, 2147483647},
        {"-2147483649", S_OK, INT_MIN}, {"99999999999999999999", S_OK, INT_MAX}, {"1e3", S_OK, 1},
        {"None", E_FAIL, 0}, {"-", E_FAIL, 0}, {"+-5", E_FAIL, 0}, {"- 5", E_FAIL, 0}, {"on", E_FAIL, 0},
    };
    // clang-format on
    for (const auto& row : cases) {
        core.Offer("halvUCR", "", row.option);
        int value = 77;
        EXPECT_EQ(row.result, getPPDOptionSV(context, "halvUCR", &value, nullptr, 0)) << row.option;
        EXPECT_EQ(row.value, value) << row.option;
    }
}

TEST_F(FeatureTest, AnAnswerIsReadWithinItsBytes)
{
    const std::tuple<FakeCore::Answer, HRESULT, const char*> cases[] = {
        {{S_OK, ""}, E_FAIL, "before"},
        {{S_FALSE, List({"halvX", "5"})}, E_FAIL, "before"},
        {{S_OK, std::string("halvX\0", 6) + std::string(1018, 'x')}, S_OK, ""},
        {{S_OK, List({"halvX", "5"}), 0xFFFFFFFF}, S_OK, "5"},
        {{S_OK, List({"halvX", "5"}), 0}, S_OK, "5"}, // up to the closing zero
        {{S_OK, List({"halvX", "5"}), 7}, S_OK, ""}};
    for (const auto& [answer, result, expected] : cases) {
        core.answers["GetOptions halvX"] = answer;
        char option[64] = "before";
        EXPECT_EQ(result, getPPDOptionSV(context, "halvX", nullptr, option, sizeof option)) << expected;
        EXPECT_STREQ(expected, option);
    }
}

TEST_F(FeatureTest, WhatCannotBeAskedIsNotAvailable)
{
    int value = 77;
    for (const size_t length : {254u, 255u, 300u}) {
        const std::string feature(length, 'f');
        core.Offer(feature, "5", "5");
        EXPECT_EQ(length == 254 ? S_OK : E_FAIL,
                  getPPDOptionSV(context, feature.c_str(), &value, nullptr, 0));
    }
    EXPECT_EQ(1u, core.calls.size());
    context.core.helper = nullptr;
    EXPECT_EQ(E_FAIL, getPPDOptionSV(context, "PageSize", &value, nullptr, 0));
    EXPECT_EQ(E_FAIL, SetOption(context, "PageSize", "A4"));
    EXPECT_EQ(5, value);
}

} // namespace
} // namespace tintwerk
