#include "host/core/core_helper.h"

#include <cstring>
#include <new>
#include <type_traits>

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
        const std::size_t left = static_cast<std::size_t>(end_ - at_);
        const auto* zero = left ? static_cast<PCSTR>(std::memchr(at_, 0, left)) : nullptr;
        closed_ = zero;
        if (!closed_) return false;
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

// Of the attributes that a core driver has, this plug-in asks for the name only.
HRESULT ReplyAttribute(PCSTR attribute, WideView name, PDWORD type, void* buffer, DWORD room, PDWORD needed)
{
    if (!attribute || std::string_view(attribute) != "DisplayName" || !type) return E_INVALIDARG;
    *type = kADT_UNICODE;
    return Reply(name.data(), name.size() * sizeof(WCHAR), buffer, room, needed);
}

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

const auto kNoReply = [](bool) { return std::string(); };

// What the log tells of a list that was given.
auto ReplyList(PCSTR list, const DWORD* needed, bool pairs)
{
    return [=](bool answered) { return answered ? ": " + ShownList(list, *needed, pairs) : ""; };
}

} // namespace

HRESULT CoreHelper::QueryInterface(REFIID iid, void** object)
{
    if (!object) return E_POINTER;
    *object = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPrintCoreUI2))
        *object = static_cast<IPrintCoreUI2*>(this);
    else if (IsEqualIID(iid, IID_IPrintCoreHelperPS))
        *object = static_cast<IPrintCoreHelperPS*>(this);
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

template <typename Body, typename ReplyText>
HRESULT CoreHelper::Answer(CoreMethod method, std::initializer_list<PCSTR> names, const Body& body,
                           const ReplyText& reply) noexcept
{
    if (!driver_ || driver_->calls_.RefusesNext()) return E_UNEXPECTED;
    const auto ask = [&]() -> HRESULT {
        if constexpr (std::is_invocable_v<Body>) {
            return body();
        } else {
            const PCSTR* const name = names.begin();
            const auto feature = name[0] ? Model().FindFeature(name[0]) : std::nullopt;
            if (!feature) return E_INVALIDARG;
            if constexpr (std::is_invocable_v<Body, std::size_t>) {
                return body(*feature);
            } else {
                const auto option = name[1] ? Model().FindOption(*feature, name[1]) : std::nullopt;
                return option ? body(*feature, *option) : E_INVALIDARG;
            }
        }
    };
    HRESULT status = E_FAIL;
    try {
        status = ask();
    } catch (const std::bad_alloc&) {
        status = E_OUTOFMEMORY;
    } catch (...) { // no exception leaves a method
    }
    return driver_->calls_.Note(method, status, [&] {
        std::string text;
        for (const PCSTR name : names)
            text += (text.empty() ? "" : " ") + Shown(name);
        return text + reply(SUCCEEDED(status));
    });
}

template <typename Body, typename ReplyText>
HRESULT CoreHelper::AnswerUi(CoreMethod method, POEMUIOBJ core, DWORD flags,
                             std::initializer_list<PCSTR> names, const Body& body,
                             const ReplyText& reply) noexcept
{
    if (driver_ && (core != driver_->CoreObject() || flags != 0))
        return Answer(
            method, names, [] { return E_INVALIDARG; }, reply);
    return Answer(method, names, body, reply);
}

HRESULT CoreHelper::NotServed() noexcept
{
    return Answer(
        CoreMethod::NotServed, {}, [] { return E_NOTIMPL; }, kNoReply);
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

// ---- IPrintCoreUI2

HRESULT CoreHelper::GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD requestSize, PSTR reply,
                               DWORD replySize, PDWORD needed)
{
    const auto body = [&]() -> HRESULT {
        const CoreModel& model = Model();
        thread_local std::string answer; // keeps its room: a sheet asks hundreds of times
        answer.clear();
        const auto add = [&](std::size_t number) {
            Append(answer, model.features[number].keyword);
            Append(answer, model.features[number].keywords[driver_->selected_[number]]);
        };
        if (!request || requestSize == 0 || request[0] == 0) {
            for (std::size_t number = 0; number < model.features.size(); ++number) {
                if (!model.features[number].hidden) add(number);
            }
        } else {
            ListReader reader(request, requestSize);
            for (std::string_view keyword; reader.Next(keyword);) {
                // A feature that this printer lacks is left out, so that one request can serve many printers.
                if (const auto number = model.FindFeature(keyword)) add(*number);
            }
            if (!reader.Closed() || answer.empty()) return E_INVALIDARG;
        }
        Append(answer, {});
        return Reply(answer, reply, replySize, needed);
    };
    return AnswerUi(CoreMethod::GetOptions, core, flags, {}, body, [&](bool answered) {
        return ShownList(request, requestSize, false) + ReplyList(reply, needed, true)(answered);
    });
}

HRESULT CoreHelper::SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD size, PDWORD result)
{
    return AnswerUi(
        CoreMethod::SetOptions, core, 0, {},
        [&] { return result && pairs ? Set(flags, pairs, size, *result) : E_INVALIDARG; },
        [&](bool) { return ShownList(pairs, size, true); });
}

HRESULT CoreHelper::Set(DWORD flags, PCSTR pairs, DWORD size, DWORD& result)
{
    if (flags != SETOPTIONS_FLAG_RESOLVE_CONFLICT && flags != SETOPTIONS_FLAG_KEEP_CONFLICT)
        return E_INVALIDARG;
    const CoreModel& model = Model();
    std::vector<std::size_t> selected = driver_->selected_;
    std::vector<bool> chosen(selected.size());
    ListReader reader(pairs, size);
    for (std::string_view feature, option; reader.Next(feature);) {
        const auto number = model.FindFeature(feature);
        const auto choice = number && reader.Next(option) ? model.FindOption(*number, option) : std::nullopt;
        if (!choice) { // nothing is changed
            driver_->refusedSettings_.push_back(ShownList(pairs, size, true));
            return E_INVALIDARG;
        }
        selected[*number] = *choice;
        chosen[*number] = true;
    }
    if (!reader.Closed()) return E_INVALIDARG;
    result = SETOPTIONS_RESULT_NO_CONFLICT;
    if (!model.Conflicts(selected).empty()) {
        const bool resolve = flags == SETOPTIONS_FLAG_RESOLVE_CONFLICT;
        result = resolve && model.Resolve(selected, chosen) ? SETOPTIONS_RESULT_CONFLICT_RESOLVED
                                                            : SETOPTIONS_RESULT_CONFLICT_REMAINED;
    }
    Adopt(std::move(selected), chosen);
    return S_OK;
}

HRESULT CoreHelper::EnumConstrainedOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                           PDWORD needed)
{
    return AnswerUi(
        CoreMethod::EnumConstrainedOptions, core, flags, {feature},
        [&](std::size_t number) {
            const std::vector<bool> constrained = Model().ConstrainedOptions(driver_->selected_, number);
            std::string answer;
            for (std::size_t option = 0; option < constrained.size(); ++option) {
                if (constrained[option]) Append(answer, Model().features[number].keywords[option]);
            }
            Append(answer, {});
            return Reply(answer, list, size, needed);
        },
        ReplyList(list, needed, false));
}

HRESULT CoreHelper::WhyConstrained(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option, PSTR pairs,
                                   DWORD size, PDWORD needed)
{
    return AnswerUi(
        CoreMethod::WhyConstrained, core, flags, {feature, option},
        [&](std::size_t number, std::size_t choice) {
            std::string answer;
            for (const CoreModel::Side& reason : Model().WhyConstrained(driver_->selected_, number, choice)) {
                const CoreModel::Feature& other = Model().features[reason.feature];
                Append(answer, other.keyword);
                Append(answer, other.keywords[reason.option]);
            }
            Append(answer, {});
            return Reply(answer, pairs, size, needed);
        },
        ReplyList(pairs, needed, true));
}

HRESULT CoreHelper::GetFeatureAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR attribute,
                                        PDWORD type, PBYTE value, DWORD size, PDWORD needed)
{
    return AnswerUi(
        CoreMethod::GetFeatureAttribute, core, flags, {feature, attribute},
        [&](std::size_t number) {
            return ReplyAttribute(attribute, Model().DisplayName(number), type, value, size, needed);
        },
        kNoReply);
}

HRESULT CoreHelper::GetOptionAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                       PCSTR attribute, PDWORD type, PBYTE value, DWORD size, PDWORD needed)
{
    return AnswerUi(
        CoreMethod::GetOptionAttribute, core, flags, {feature, option, attribute},
        [&](std::size_t number, std::size_t choice) {
            return ReplyAttribute(attribute, Model().DisplayName(number, choice), type, value, size, needed);
        },
        kNoReply);
}

HRESULT CoreHelper::EnumFeatures(POEMUIOBJ core, DWORD flags, PSTR list, DWORD size, PDWORD needed)
{
    return AnswerUi(
        CoreMethod::EnumFeatures, core, flags, {},
        [&] { return Reply(Model().featureList, list, size, needed); }, kNoReply);
}

HRESULT CoreHelper::EnumOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                PDWORD needed)
{
    return AnswerUi(
        CoreMethod::EnumOptions, core, flags, {feature},
        [&](std::size_t number) { return Reply(Model().features[number].list, list, size, needed); },
        kNoReply);
}

// ---- IPrintCoreHelperPS

HRESULT CoreHelper::GetOption(const DEVMODEW* devmode, DWORD size, PCSTR feature, PCSTR* option)
{
    return Answer(
        CoreMethod::PSGetOption, {feature},
        [&](std::size_t number) {
            const auto selected = option ? SelectionsOf(Model(), devmode, size) : std::nullopt;
            if (!selected) return E_INVALIDARG;
            *option = Model().features[number].options[(*selected)[number]];
            return S_OK;
        },
        [&](bool answered) { return answered ? ": " + Shown(*option) : ""; });
}

HRESULT CoreHelper::EnumOptions(PCSTR feature, PCSTR** options, DWORD* count)
{
    return Answer(
        CoreMethod::PSEnumOptions, {feature},
        [&](std::size_t number) {
            if (!options || !count) return E_INVALIDARG;
            const std::vector<PCSTR>& pointers = Model().features[number].options;
            *options = const_cast<PCSTR*>(pointers.data());
            *count = static_cast<DWORD>(pointers.size());
            return S_OK;
        },
        kNoReply);
}

} // namespace tintwerk
