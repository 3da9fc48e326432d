#include "src/sheets/advanced_selection.h"

#include <cstdio>
#include <cstring>

#include "src/bindings/advanced_features.h"
#include "src/features/keyword_list.h"
#include "src/i18n/string_table.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

bool Append(AdvancedKeywords& keywords, const char* text)
{
    const SIZE_T bytes = std::strlen(text) + 1;
    if (keywords.used + bytes >= kFeatureListBytes) return false;
    std::memcpy(keywords.list + keywords.used, text, bytes);
    keywords.used += bytes;
    keywords.list[keywords.used] = 0;
    return true;
}

void AppendHeader(AdvancedKeywords& keywords, const AdvancedGroup& group)
{
    char header[64];
    std::snprintf(header, sizeof(header), "+%.*s", group.titleLength,
                  FindDefaultString(group.title, 1).Get());
    Append(keywords, header);
}

// The header goes again when the group stays empty.
void AppendGroup(AdvancedKeywords& keywords, const KeywordList& features, const AdvancedGroup& group)
{
    const SIZE_T before = keywords.used;
    AppendHeader(keywords, group);
    bool any = !group.special.empty();
    for (const char* feature : group.special) {
        Trace(TEXT("Special Feature: '%S'\n"), feature);
        Append(keywords, feature);
    }
    for (const char* feature : features)
        if (TakesFeature(group, feature)) any |= Append(keywords, feature);
    if (any) return;
    keywords.used = before;
    keywords.list[before] = 0;
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
    for (const AdvancedGroup& group : kAdvancedGroups)
        AppendGroup(keywords, features, group);
    return true;
}

} // namespace tintwerk
