#include "host/core/core_helper.h"

#include <cstring>
#include <new>

namespace tintwerk {
namespace {

// Takes keywords off a list that a plug-in passed, never past the bytes it said there are.
class ListReader
{
public:
    ListReader(PCSTR list, DWORD size) : at_(list), end_(list ? list + size : nullptr) {}

    // False at the end of the list, and where the list is not closed as it must be.
    bool Next(std::string_view& keyword)
    {
        if (at_ == end_) {
            closed_ = false;
            return false;
        }
        const auto* zero = static_cast<PCSTR>(std::memchr(at_, 0, static_cast<std::size_t>(end_ - at_)));
        if (!zero) {
            closed_ = false;
            return false;
        }
        keyword = {at_, static_cast<std::size_t>(zero - at_)};
        at_ = zero + 1;
        return !keyword.empty();
    }
    bool Closed() const { return closed_; }

private:
    PCSTR at_;
    PCSTR end_;
    bool closed_ = true;
};

// The one way of handing out bytes: the size first, then the bytes when there is room for all of them.
HRESULT Reply(const void* data, std::size_t size, void* buffer, DWORD room, PDWORD needed)
{
    if (!needed) return E_INVALIDARG;
    *needed = static_cast<DWORD>(size);
    if (!buffer || room < size) return E_OUTOFMEMORY;
    if (size) std::memcpy(buffer, data, size);
    return S_OK;
}

HRESULT Reply(const std::string& list, void* buffer, DWORD room, PDWORD needed)
{
    return Reply(list.data(), list.size(), buffer, room, needed);
}

// No exception leaves a method.
template <typename Body> HRESULT Guarded(const Body& body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

const auto kNoArguments = [] { return std::string(); };

std::string Shown(PCSTR keyword)
{
    return keyword ? keyword : "(null)";
}

// "halvBrightness halvContrast" or, of a pair list, "halvBrightness=10 halvContrast=0".
std::string ShownList(PCSTR list, DWORD size, bool pairs)
{
    std::string shown;
    ListReader reader(list, size);
    std::string_view keyword;
    for (int at = 0; reader.Next(keyword); ++at) {
        if (at) shown += pairs && at % 2 ? '=' : ' ';
        shown += keyword;
    }
    return shown;
}

} // namespace

// ---- identity

HRESULT CoreHelper::QueryInterface(REFIID iid, void** object)
{
    if (!object) return E_POINTER;
    *object = nullptr;
    if (IsEqualIID(iid, IID_IUnknown))
        *object = static_cast<IUnknown*>(this);
    else if (IsEqualIID(iid, IID_IPrintCoreUI2))
        *object = &ui;
    else if (IsEqualIID(iid, IID_IPrintCoreHelperPS))
        *object = &ps;
    else
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG CoreHelper::Release()
{
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

std::optional<std::size_t> CoreHelper::Feature(PCSTR keyword) const
{
    return driver_ && keyword ? Model().FindFeature(keyword) : std::nullopt;
}

std::optional<std::size_t> CoreHelper::Option(std::size_t feature, PCSTR keyword) const
{
    return keyword ? Model().FindOption(feature, keyword) : std::nullopt;
}

void CoreHelper::Adopt(std::vector<std::size_t> selected, const std::vector<bool>& chosen)
{
    const CoreModel& model = Model();
    for (std::size_t feature = 0; feature < selected.size(); ++feature) {
        if (chosen[feature] || selected[feature] != driver_->selected_[feature])
            driver_->selections_.Set(model.features[feature].keyword,
                                     model.features[feature].keywords[selected[feature]]);
    }
    driver_->selected_ = std::move(selected);
}

HRESULT CoreUiHelper::QueryInterface(REFIID iid, void** object)
{
    return owner_.QueryInterface(iid, object);
}
ULONG CoreUiHelper::AddRef()
{
    return owner_.AddRef();
}
ULONG CoreUiHelper::Release()
{
    return owner_.Release();
}
HRESULT CorePsHelper::QueryInterface(REFIID iid, void** object)
{
    return owner_.QueryInterface(iid, object);
}
ULONG CorePsHelper::AddRef()
{
    return owner_.AddRef();
}
ULONG CorePsHelper::Release()
{
    return owner_.Release();
}

// ---- IPrintCoreUI2

// Every method but SetOptions takes flags that must be 0.
bool CoreUiHelper::Accepts(POEMUIOBJ core, DWORD flags) const
{
    return owner_.IsCoreObject(core) && flags == 0;
}

HRESULT CoreUiHelper::DrvGetDriverSetting(PVOID, PCSTR, PVOID, DWORD, PDWORD, PDWORD)
{
    return owner_.Answers() ? owner_.Calls().Note(CoreMethod::DrvGetDriverSetting, E_NOTIMPL, kNoArguments)
                            : E_UNEXPECTED;
}

HRESULT CoreUiHelper::DrvUpgradeRegistrySetting(HANDLE, PCSTR, PCSTR)
{
    return owner_.Answers()
               ? owner_.Calls().Note(CoreMethod::DrvUpgradeRegistrySetting, E_NOTIMPL, kNoArguments)
               : E_UNEXPECTED;
}

HRESULT CoreUiHelper::DrvUpdateUISetting(PVOID, PVOID, DWORD, DWORD)
{
    return owner_.Answers() ? owner_.Calls().Note(CoreMethod::DrvUpdateUISetting, E_NOTIMPL, kNoArguments)
                            : E_UNEXPECTED;
}

HRESULT CoreUiHelper::QuerySimulationSupport(HANDLE, DWORD, PBYTE, DWORD, PDWORD)
{
    return owner_.Answers() ? owner_.Calls().Note(CoreMethod::QuerySimulationSupport, E_NOTIMPL, kNoArguments)
                            : E_UNEXPECTED;
}

HRESULT CoreUiHelper::GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD requestSize, PSTR reply,
                                 DWORD replySize, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status = Accepts(core, flags) && needed
                               ? Options(request, requestSize, reply, replySize, needed)
                               : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::GetOptions, status, [&] {
        std::string asked = ShownList(request, requestSize, false);
        return SUCCEEDED(status) ? asked + ": " + ShownList(reply, *needed, true) : asked;
    });
}

HRESULT CoreUiHelper::Options(PCSTR request, DWORD requestSize, PSTR reply, DWORD replySize,
                              PDWORD needed) const
{
    const CoreModel& model = owner_.Model();
    const std::vector<std::size_t>& selected = owner_.Selected();
    // Twice over the request: for the size, then for the bytes.
    std::size_t size = 0;
    bool write = false;
    const auto pair = [&](std::size_t number) {
        const CoreModel::Feature& feature = model.features[number];
        for (const std::string_view keyword : {feature.keyword, feature.keywords[selected[number]]}) {
            if (write) {
                std::memcpy(reply + size, keyword.data(), keyword.size());
                reply[size + keyword.size()] = 0;
            }
            size += keyword.size() + 1;
        }
    };
    const bool all = !request || requestSize == 0 || request[0] == 0;
    const auto pairs = [&]() -> HRESULT {
        size = 0;
        if (all) {
            for (std::size_t number = 0; number < model.features.size(); ++number) {
                if (!model.features[number].hidden) pair(number);
            }
            return S_OK;
        }
        ListReader reader(request, requestSize);
        std::string_view keyword;
        while (reader.Next(keyword)) {
            // A feature that this printer lacks is left out, so that one request can serve many printers.
            if (const auto number = model.FindFeature(keyword)) pair(*number);
        }
        return reader.Closed() && size ? S_OK : E_INVALIDARG;
    };
    if (const HRESULT status = pairs(); FAILED(status)) return status;
    *needed = static_cast<DWORD>(size + 1);
    if (!reply || replySize < *needed) return E_OUTOFMEMORY;
    write = true;
    pairs();
    reply[size] = 0;
    return S_OK;
}

HRESULT CoreUiHelper::SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD size, PDWORD result)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    DWORD outcome = SETOPTIONS_RESULT_NO_CONFLICT;
    const bool accepted = owner_.IsCoreObject(core) && result && pairs;
    const HRESULT status =
        accepted ? Guarded([&] { return Set(flags, pairs, size, outcome); }) : E_INVALIDARG;
    if (SUCCEEDED(status)) *result = outcome;
    return owner_.Calls().Note(CoreMethod::SetOptions, status, [&] { return ShownList(pairs, size, true); });
}

HRESULT CoreUiHelper::Set(DWORD flags, PCSTR pairs, DWORD size, DWORD& result)
{
    if (flags != SETOPTIONS_FLAG_RESOLVE_CONFLICT && flags != SETOPTIONS_FLAG_KEEP_CONFLICT)
        return E_INVALIDARG;
    const CoreModel& model = owner_.Model();
    std::vector<std::size_t> selected = owner_.Selected();
    std::vector<bool> chosen(selected.size());
    ListReader reader(pairs, size);
    for (std::string_view feature, option; reader.Next(feature);) {
        const auto number = model.FindFeature(feature);
        const auto choice = number && reader.Next(option) ? model.FindOption(*number, option) : std::nullopt;
        if (!choice) return E_INVALIDARG; // nothing is changed
        selected[*number] = *choice;
        chosen[*number] = true;
    }
    if (!reader.Closed()) return E_INVALIDARG;
    if (!model.Conflicts(selected).empty()) {
        const bool resolve = flags == SETOPTIONS_FLAG_RESOLVE_CONFLICT;
        result = resolve && model.Resolve(selected, chosen) ? SETOPTIONS_RESULT_CONFLICT_RESOLVED
                                                            : SETOPTIONS_RESULT_CONFLICT_REMAINED;
    }
    owner_.Adopt(std::move(selected), chosen);
    return S_OK;
}

HRESULT CoreUiHelper::EnumConstrainedOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list,
                                             DWORD size, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const HRESULT status = !number || !Accepts(core, flags) ? E_INVALIDARG : Guarded([&] {
        const CoreModel& model = owner_.Model();
        const std::vector<bool> constrained = model.ConstrainedOptions(owner_.Selected(), *number);
        std::string answer;
        for (std::size_t option = 0; option < constrained.size(); ++option) {
            if (constrained[option]) answer.append(model.features[*number].keywords[option]).append(1, '\0');
        }
        answer += '\0';
        return Reply(answer, list, size, needed);
    });
    return owner_.Calls().Note(CoreMethod::EnumConstrainedOptions, status, [&] {
        return Shown(feature) + (SUCCEEDED(status) ? ": " + ShownList(list, *needed, false) : "");
    });
}

HRESULT CoreUiHelper::WhyConstrained(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option, PSTR pairs,
                                     DWORD size, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const auto choice = number ? owner_.Option(*number, option) : std::nullopt;
    const HRESULT status = !choice || !Accepts(core, flags) ? E_INVALIDARG : Guarded([&] {
        const CoreModel& model = owner_.Model();
        std::string answer;
        for (const CoreModel::Side& reason : model.WhyConstrained(owner_.Selected(), *number, *choice)) {
            const CoreModel::Feature& other = model.features[reason.feature];
            answer.append(other.keyword)
                .append(1, '\0')
                .append(other.keywords[reason.option])
                .append(1, '\0');
        }
        answer += '\0';
        return Reply(answer, pairs, size, needed);
    });
    return owner_.Calls().Note(CoreMethod::WhyConstrained, status, [&] {
        return Shown(feature) + " " + Shown(option) +
               (SUCCEEDED(status) ? ": " + ShownList(pairs, *needed, true) : "");
    });
}

HRESULT CoreUiHelper::Attribute(const std::optional<CoreAttribute>& attribute, PDWORD type, PBYTE value,
                                DWORD size, PDWORD needed)
{
    if (!attribute || !type) return E_INVALIDARG;
    *type = attribute->type;
    return Reply(attribute->data, attribute->size, value, size, needed);
}

HRESULT CoreUiHelper::GetGlobalAttribute(POEMUIOBJ core, DWORD flags, PCSTR attribute, PDWORD type,
                                         PBYTE value, DWORD size, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status =
        Accepts(core, flags) && attribute
            ? Attribute(owner_.Model().GlobalAttribute(attribute), type, value, size, needed)
            : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::GetGlobalAttribute, status, [&] { return Shown(attribute); });
}

HRESULT CoreUiHelper::GetFeatureAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR attribute,
                                          PDWORD type, PBYTE value, DWORD size, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const HRESULT status =
        number && Accepts(core, flags) && attribute
            ? Attribute(owner_.Model().FeatureAttribute(*number, attribute), type, value, size, needed)
            : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::GetFeatureAttribute, status,
                               [&] { return Shown(feature) + " " + Shown(attribute); });
}

HRESULT CoreUiHelper::GetOptionAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                         PCSTR attribute, PDWORD type, PBYTE value, DWORD size, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const auto choice = number ? owner_.Option(*number, option) : std::nullopt;
    const HRESULT status = choice && Accepts(core, flags) && attribute
                               ? Attribute(owner_.Model().OptionAttribute(*number, *choice, attribute), type,
                                           value, size, needed)
                               : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::GetOptionAttribute, status,
                               [&] { return Shown(feature) + " " + Shown(option) + " " + Shown(attribute); });
}

HRESULT CoreUiHelper::EnumFeatures(POEMUIOBJ core, DWORD flags, PSTR list, DWORD size, PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status =
        Accepts(core, flags) ? Reply(owner_.Model().featureList, list, size, needed) : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::EnumFeatures, status, kNoArguments);
}

HRESULT CoreUiHelper::EnumOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                  PDWORD needed)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const HRESULT status = number && Accepts(core, flags)
                               ? Reply(owner_.Model().features[*number].list, list, size, needed)
                               : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::EnumOptions, status, [&] { return Shown(feature); });
}

// ---- IPrintCoreHelperPS

HRESULT CorePsHelper::GetOption(const DEVMODEW* devmode, DWORD size, PCSTR feature, PCSTR* option)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status = Guarded([&] {
        const auto number = owner_.Feature(feature);
        const auto selected = number && option ? SelectionsOf(owner_.Model(), devmode, size) : std::nullopt;
        if (!selected) return E_INVALIDARG;
        *option = owner_.Model().features[*number].options[(*selected)[*number]];
        return S_OK;
    });
    return owner_.Calls().Note(CoreMethod::PSGetOption, status, [&] {
        return Shown(feature) + (SUCCEEDED(status) ? ": " + Shown(*option) : "");
    });
}

HRESULT CorePsHelper::SetOptions(DEVMODEW* devmode, DWORD size, BOOL resolve,
                                 const PRINT_FEATURE_OPTION* pairs, DWORD count, DWORD* written,
                                 DWORD* result)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status = Guarded([&] {
        const CoreModel& model = owner_.Model();
        auto selected = SelectionsOf(model, devmode, size);
        if (!selected || (!pairs && count) || !written || !result) return E_INVALIDARG;
        std::vector<bool> chosen(selected->size());
        for (DWORD at = 0; at < count; ++at) {
            const auto number = owner_.Feature(pairs[at].pszFeature);
            const auto choice = number ? owner_.Option(*number, pairs[at].pszOption) : std::nullopt;
            if (!choice) return E_INVALIDARG;
            (*selected)[*number] = *choice;
            chosen[*number] = true;
        }
        *written = count;
        *result = SETOPTIONS_RESULT_NO_CONFLICT;
        if (!model.Conflicts(*selected).empty())
            *result = resolve && model.Resolve(*selected, chosen) ? SETOPTIONS_RESULT_CONFLICT_RESOLVED
                                                                  : SETOPTIONS_RESULT_CONFLICT_REMAINED;
        StoreSelections(model, devmode, *selected);
        return S_OK;
    });
    return owner_.Calls().Note(CoreMethod::PSSetOptions, status, kNoArguments);
}

HRESULT CorePsHelper::EnumConstrainedOptions(const DEVMODEW* devmode, DWORD size, PCSTR feature,
                                             PCSTR** options, DWORD* count)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status = Guarded([&] {
        const CoreModel& model = owner_.Model();
        const auto number = owner_.Feature(feature);
        const auto selected = number && options && count ? SelectionsOf(model, devmode, size) : std::nullopt;
        if (!selected) return E_INVALIDARG;
        constrained_.clear();
        const std::vector<bool> flags = model.ConstrainedOptions(*selected, *number);
        for (std::size_t option = 0; option < flags.size(); ++option) {
            if (flags[option]) constrained_.push_back(model.features[*number].options[option]);
        }
        *options = constrained_.data();
        *count = static_cast<DWORD>(constrained_.size());
        return S_OK;
    });
    return owner_.Calls().Note(CoreMethod::PSEnumConstrainedOptions, status, [&] { return Shown(feature); });
}

HRESULT CorePsHelper::WhyConstrained(const DEVMODEW* devmode, DWORD size, PCSTR feature, PCSTR option,
                                     const PRINT_FEATURE_OPTION** pairs, DWORD* count)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status = Guarded([&] {
        const CoreModel& model = owner_.Model();
        const auto number = owner_.Feature(feature);
        const auto choice = number ? owner_.Option(*number, option) : std::nullopt;
        const auto selected = choice && pairs && count ? SelectionsOf(model, devmode, size) : std::nullopt;
        if (!selected) return E_INVALIDARG;
        whyPairs_.clear();
        for (const CoreModel::Side& reason : model.WhyConstrained(*selected, *number, *choice)) {
            const CoreModel::Feature& other = model.features[reason.feature];
            whyPairs_.push_back({other.keyword.data(), other.options[reason.option]});
        }
        *pairs = whyPairs_.data();
        *count = static_cast<DWORD>(whyPairs_.size());
        return S_OK;
    });
    return owner_.Calls().Note(CoreMethod::PSWhyConstrained, status,
                               [&] { return Shown(feature) + " " + Shown(option); });
}

HRESULT CorePsHelper::EnumFeatures(PCSTR** features, DWORD* count)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status = features && count ? S_OK : E_INVALIDARG;
    if (SUCCEEDED(status)) {
        *features = const_cast<PCSTR*>(owner_.Model().featurePointers.data());
        *count = static_cast<DWORD>(owner_.Model().featurePointers.size());
    }
    return owner_.Calls().Note(CoreMethod::PSEnumFeatures, status, kNoArguments);
}

HRESULT CorePsHelper::EnumOptions(PCSTR feature, PCSTR** options, DWORD* count)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const HRESULT status = number && options && count ? S_OK : E_INVALIDARG;
    if (SUCCEEDED(status)) {
        const std::vector<PCSTR>& pointers = owner_.Model().features[*number].options;
        *options = const_cast<PCSTR*>(pointers.data());
        *count = static_cast<DWORD>(pointers.size());
    }
    return owner_.Calls().Note(CoreMethod::PSEnumOptions, status, [&] { return Shown(feature); });
}

HRESULT CorePsHelper::GetFontSubstitution(PCWSTR, PCWSTR*)
{
    return owner_.Answers() ? owner_.Calls().Note(CoreMethod::PSGetFontSubstitution, E_NOTIMPL, kNoArguments)
                            : E_UNEXPECTED;
}

HRESULT CorePsHelper::SetFontSubstitution(PCWSTR, PCWSTR)
{
    return owner_.Answers() ? owner_.Calls().Note(CoreMethod::PSSetFontSubstitution, E_NOTIMPL, kNoArguments)
                            : E_UNEXPECTED;
}

HRESULT CorePsHelper::CreateInstanceOfMSXMLObject(REFCLSID, IUnknown*, DWORD, REFIID, void** object)
{
    if (object) *object = nullptr;
    return owner_.Answers()
               ? owner_.Calls().Note(CoreMethod::PSCreateInstanceOfMSXMLObject, E_NOTIMPL, kNoArguments)
               : E_UNEXPECTED;
}

HRESULT CorePsHelper::Attribute(const std::optional<CoreAttribute>& attribute, DWORD* type, PBYTE* value,
                                DWORD* size)
{
    if (!attribute || !type || !value || !size) return E_INVALIDARG;
    *type = attribute->type;
    *value = static_cast<PBYTE>(const_cast<void*>(attribute->data));
    *size = static_cast<DWORD>(attribute->size);
    return S_OK;
}

HRESULT CorePsHelper::GetGlobalAttribute(PCSTR attribute, DWORD* type, PBYTE* value, DWORD* size)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const HRESULT status =
        attribute ? Attribute(owner_.Model().GlobalAttribute(attribute), type, value, size) : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::PSGetGlobalAttribute, status, [&] { return Shown(attribute); });
}

HRESULT CorePsHelper::GetFeatureAttribute(PCSTR feature, PCSTR attribute, DWORD* type, PBYTE* value,
                                          DWORD* size)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const HRESULT status =
        number && attribute
            ? Attribute(owner_.Model().FeatureAttribute(*number, attribute), type, value, size)
            : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::PSGetFeatureAttribute, status,
                               [&] { return Shown(feature) + " " + Shown(attribute); });
}

HRESULT CorePsHelper::GetOptionAttribute(PCSTR feature, PCSTR option, PCSTR attribute, DWORD* type,
                                         PBYTE* value, DWORD* size)
{
    if (!owner_.Answers()) return E_UNEXPECTED;
    const auto number = owner_.Feature(feature);
    const auto choice = number ? owner_.Option(*number, option) : std::nullopt;
    const HRESULT status =
        choice && attribute
            ? Attribute(owner_.Model().OptionAttribute(*number, *choice, attribute), type, value, size)
            : E_INVALIDARG;
    return owner_.Calls().Note(CoreMethod::PSGetOptionAttribute, status,
                               [&] { return Shown(feature) + " " + Shown(option) + " " + Shown(attribute); });
}

} // namespace tintwerk
