// A core driver that answers with whatever the fuzzer gives: any status, any bytes, any size reported.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/support/fake_core.h"

namespace tintwerk {

class RandomCore : public RefusingCore
{
public:
    explicit RandomCore(FuzzedDataProvider& data) : data_(data) {}

    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ, DWORD, PCSTR, DWORD, PSTR reply, DWORD size,
                                         PDWORD needed) override
    {
        return Answer(reply, size, needed);
    }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ, DWORD, PCSTR pairs, DWORD size, PDWORD result) override
    {
        if (size < 3 || pairs[size - 1] || pairs[size - 2]) std::abort();
        *result = data_.ConsumeIntegral<DWORD>();
        return Status();
    }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ, DWORD, PCSTR, PSTR list, DWORD size,
                                                     PDWORD needed) override
    {
        return Answer(list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ, DWORD, PCSTR, PCSTR, PSTR pairs, DWORD size,
                                             PDWORD needed) override
    {
        return Answer(pairs, size, needed);
    }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ, DWORD, PCSTR, PCSTR, PDWORD type, PBYTE value,
                                                  DWORD size, PDWORD needed) override
    {
        return AnswerAttribute(type, value, size, needed);
    }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ, DWORD, PCSTR, PCSTR, PCSTR, PDWORD type,
                                                 PBYTE value, DWORD size, PDWORD needed) override
    {
        return AnswerAttribute(type, value, size, needed);
    }
    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ, DWORD, PSTR list, DWORD size, PDWORD needed) override
    {
        return Answer(list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ, DWORD, PCSTR, PSTR list, DWORD size,
                                          PDWORD needed) override
    {
        return Answer(list, size, needed);
    }

private:
    HRESULT Status()
    {
        constexpr HRESULT kStatuses[] = {S_OK,         S_OK,    S_OK,        E_OUTOFMEMORY,
                                         E_INVALIDARG, S_FALSE, E_UNEXPECTED};
        return data_.PickValueInArray(kStatuses);
    }

    HRESULT AnswerAttribute(PDWORD type, PBYTE value, DWORD size, PDWORD needed)
    {
        *type = data_.ConsumeBool() ? kADT_UNICODE : data_.ConsumeIntegral<DWORD>();
        return Answer(reinterpret_cast<PSTR>(value), size, needed);
    }

    HRESULT Answer(PSTR buffer, DWORD size, PDWORD needed)
    {
        const std::string bytes = data_.ConsumeRandomLengthString(size);
        std::memcpy(buffer, bytes.data(), bytes.size());
        // A true size, or one that lies. A request for gigabytes says nothing about this program.
        *needed = data_.ConsumeBool() ? static_cast<DWORD>(bytes.size())
                                      : data_.ConsumeIntegralInRange<DWORD>(0, 1 << 20);
        return Status();
    }

    FuzzedDataProvider& data_;
};

} // namespace tintwerk
