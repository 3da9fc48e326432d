#include "src/plugin/devmode_requests.h"

#include <algorithm>
#include <cstring>

#include "src/records/private_devmode.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kLargestSetting = 100;

void Stamp(OemPrivateDevmode& record)
{
    record.size = sizeof record;
    record.signature = kPluginSignature;
    record.version = kPluginVersion;
}

void ClearSettings(OemPrivateDevmode& record)
{
    record.firstSetting = record.secondSetting = 0;
}

void SetDefaults(OemPrivateDevmode& record)
{
    Stamp(record);
    ClearSettings(record);
}

void Validate(OemPrivateDevmode& record)
{
    Stamp(record);
    for (DWORD* setting : {&record.firstSetting, &record.secondSetting}) {
        if (*setting > kLargestSetting) *setting = 0;
    }
}

} // namespace

bool ConvertOEMDevmode(const void* input, void* output, DWORD bufferSize)
{
    if (!input || !output || bufferSize < sizeof(OemPrivateDevmode)) {
        Trace(TEXT("ERROR UI:  ConvertOEMDevmode() invalid parameters.\r\n"));
        return false;
    }
    const auto& from = *static_cast<const OemPrivateDevmode*>(input);
    auto& to = *static_cast<OemPrivateDevmode*>(output);
    if (from.signature != to.signature) {
        Trace(TEXT("UI:  Unknown DEVMODE signature, pOEMDMIn ignored.\r\n"));
        ClearSettings(to);
        to.signature = kPluginSignature;
    } else {
        Trace(TEXT("UI:  Converting private OEM Devmode.\r\n"));
        Trace(TEXT("UI:  pOEMDevIn:\r\n"));
        const DWORD bytes = std::min({bufferSize, from.size, to.size});
        ClearSettings(to);
        std::memmove(output, input, bytes);
    }
    to.version = kPluginVersion;
    to.size = sizeof to;
    return true;
}

HRESULT HandleDevMode(DWORD mode, OEMDMPARAM* parameters)
{
    Trace(TEXT("UI:  IOemUI:DevMode(%d, %#x) entry.\r\n"), static_cast<int>(mode), TraceNumber(parameters));
    if (!parameters || mode < OEMDM_SIZE || mode > OEMDM_MERGE) {
        Trace(TEXT("ERROR UI:  DevMode() ERROR_INVALID_PARAMETER.\r\n"));
        Trace(TEXT("UI:  \tdwMode = %d, pOemDMParam = %#lx.\r\n"), static_cast<int>(mode),
              TraceNumber(parameters));
        SetLastError(ERROR_INVALID_PARAMETER);
        return E_FAIL;
    }
    auto* const output = static_cast<OemPrivateDevmode*>(parameters->pOEMDMOut);
    switch (mode) {
    case OEMDM_SIZE:
        parameters->cbBufSize = sizeof(OemPrivateDevmode);
        break;
    case OEMDM_DEFAULT:
        if (output) SetDefaults(*output);
        break;
    case OEMDM_CONVERT:
        ConvertOEMDevmode(parameters->pOEMDMIn, output, parameters->cbBufSize);
        break;
    case OEMDM_MERGE:
        // The core driver uses the output whatever became of the conversion, so it is made valid in any case.
        ConvertOEMDevmode(parameters->pOEMDMIn, output, parameters->cbBufSize);
        if (output) Validate(*output);
        break;
    }
    return S_OK;
}

} // namespace tintwerk
