#include "src/features/feature_access.h"

#include <algorithm>
#include <cstring>

#include "src/bindings/option_number.h"
#include "src/bindings/popups.h"
#include "src/features/keyword_list.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr size_t kPairBytes = kLongestPair + 3; // two zeros and the closing one
constexpr int kDoesNotFit = -1;

} // namespace

void CopyKeyword(char* buffer, int size, const char* keyword)
{
    const size_t room = static_cast<size_t>(size);
    const size_t length = std::min(std::strlen(keyword), room - 1);
    std::memcpy(buffer, keyword, length);
    std::memset(buffer + length, 0, room - length);
}

HRESULT ReadSelectedOption(const CoreArea& core, const char* feature, SelectedOption& selected)
{
    selected = {};
    const size_t length = std::strlen(feature);
    if (!core.helper || length > kLongestFeature) return E_FAIL;

    char request[kLongestFeature + 2];
    std::memcpy(request, feature, length);
    request[length] = request[length + 1] = 0;

    DWORD needed = kReplyBytes;
    const HRESULT result = core.helper->GetOptions(core.object, 0, request, static_cast<DWORD>(length + 2),
                                                   selected.reply, kReplyBytes, &needed);
    if (result != S_OK) return result;

    const KeywordList texts(selected.reply, BytesGiven(needed, kReplyBytes));
    auto text = texts.begin();
    if (text != texts.end()) {
        selected.feature = *text;
        ++text;
        selected.option = text != texts.end() ? *text : "";
    }
    return S_OK;
}

int SetOption(const SheetContext& context, const char* feature, const char* option)
{
    feature = WithoutAsterisk(feature);
    const size_t featureLength = std::strlen(feature);
    const size_t optionLength = std::strlen(option);
    const size_t total = featureLength + optionLength + 3;
    if (total > kPairBytes) return kDoesNotFit;
    if (!context.core.helper) return E_FAIL;

    char pairs[kPairBytes];
    std::memcpy(pairs, feature, featureLength + 1);
    std::memcpy(pairs + featureLength + 1, option, optionLength + 1);
    pairs[total - 1] = 0;

    DWORD conflict = 0; // of no interest: what the user chose elsewhere stays as it is
    const int result = static_cast<int>(context.core.helper->SetOptions(
        context.core.object, SETOPTIONS_FLAG_KEEP_CONFLICT, pairs, static_cast<DWORD>(total), &conflict));
    Trace(TEXT("SetOption '%S'='%S' result = %d\n"), feature, option, result);
    return result;
}

HRESULT getPPDOptionSV(const SheetContext& context, const char* feature, int* value, char* buffer, int size)
{
    SelectedOption selected;
    const HRESULT result = ReadSelectedOption(context.core, feature, selected);
    if (result != S_OK) {
        if (context.core.helper)
            Trace(TEXT("UI:  getPPDOptionSV failed with result = %x\n"), static_cast<unsigned>(result));
        return E_FAIL;
    }
    Trace(TEXT("Result=OK\n"));
    if (!selected.feature) return E_FAIL;
    Trace(TEXT("UI:  PPDOptionGetVal of '%S' is %S\r\n"), selected.feature, selected.option);

    if (buffer) {
        CopyKeyword(buffer, size, selected.option);
        return S_OK;
    }
    const std::optional<int> number = OptionNumber(selected.option);
    *value = number.value_or(0);
    return number ? S_OK : E_FAIL;
}

} // namespace tintwerk
