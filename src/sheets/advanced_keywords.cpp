#include "src/sheets/advanced_keywords.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "src/features/keyword_list.h"
#include "src/i18n/string_table.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// Belong to the advanced page by name; whether the printer has them shows when their options are read.
constexpr const char* kSpecialFeatures[] = {
    "halvMirror",
    "halvAutorotateOnRoll",
    "halvDuplexadvanced",
    "halvDuplexAdjust",
};

// Have controls of their own on the screen printing page.
constexpr const char* kScreenPrintingFeatures[] = {
    "halvScreenmode", "halvScreenInksaturation", "halvScreenShape", "halvScreenCartridge",
    "halvScreenLPI",  "halvScreenLPI2",          "halvScreenAngle", "halvScreenAngle2",
};
constexpr SIZE_T kComparedCharacters = 19; // of a screen printing keyword

bool BeginsWith(const char* keyword, const char* prefix)
{
    return std::strncmp(keyword, prefix, std::strlen(prefix)) == 0;
}

bool IsOnScreenPrintingPage(const char* keyword)
{
    return std::ranges::any_of(kScreenPrintingFeatures, [keyword](const char* excluded) {
        return std::strncmp(keyword, excluded, kComparedCharacters) == 0;
    });
}

bool Append(AdvancedKeywords& keywords, const char* text)
{
    const SIZE_T bytes = std::strlen(text) + 1;
    if (keywords.used + bytes >= kFeatureListBytes) return false;
    std::memcpy(keywords.list + keywords.used, text, bytes);
    keywords.used += bytes;
    keywords.list[keywords.used] = 0;
    return true;
}

void AppendHeader(AdvancedKeywords& keywords, const char* english, int characters)
{
    char header[64];
    std::snprintf(header, sizeof(header), "+%.*s", characters, FindDefaultString(english, 1));
    Append(keywords, header);
}

// Appends every feature with the prefix that is not excluded; false when there was none.
bool AppendFeatures(AdvancedKeywords& keywords, const KeywordList& features, const char* prefix,
                    bool (*isExcluded)(const char*) = nullptr)
{
    bool any = false;
    for (const char* feature : features)
        if (BeginsWith(feature, prefix) && !(isExcluded && isExcluded(feature)))
            any |= Append(keywords, feature);
    return any;
}

// A group whose header goes again when it stays empty.
void AppendGroup(AdvancedKeywords& keywords, const KeywordList& features, const char* english, int characters,
                 const char* prefix)
{
    const SIZE_T before = keywords.used;
    AppendHeader(keywords, english, characters);
    if (AppendFeatures(keywords, features, prefix)) return;
    keywords.used = before;
    keywords.list[before] = 0;
}

void AppendAdvancedSettings(AdvancedKeywords& keywords, const KeywordList& features)
{
    AppendHeader(keywords, "Advanced Settings", 25);
    for (const char* feature : kSpecialFeatures) {
        Trace(TEXT("Special Feature: '%S'\n"), feature);
        Append(keywords, feature);
    }
    AppendFeatures(keywords, features, "halvScreen", IsOnScreenPrintingPage);
}

} // namespace

bool SelectAdvancedKeywords(const CoreArea& core, AdvancedKeywords& keywords)
{
    Trace(TEXT("######## optional items list #############\n"));
    if (!core.helper) return false;
    char reply[kFeatureListBytes] = {};
    DWORD needed = 0;
    if (FAILED(core.helper->EnumFeatures(core.object, 0, reply, sizeof(reply), &needed))) return false;

    const KeywordList features(reply, BytesGiven(needed, sizeof(reply)));
    AppendGroup(keywords, features, "Printer Options", 25, "halvSetting");
    AppendAdvancedSettings(keywords, features);
    AppendGroup(keywords, features, "Special Settings DTF Printing", 40, "halvDTF");
    return true;
}

} // namespace tintwerk
