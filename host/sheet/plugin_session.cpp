#include "host/sheet/plugin_session.h"

#include <algorithm>
#include <cstdio>

namespace tintwerk {

namespace {

constexpr GUID kPluginClass{0xABCE80D7, 0x9F46, 0x11D1, {0x88, 0x2A, 0x00, 0xC0, 0x4F, 0xB9, 0x61, 0xEC}};
constexpr DWORD kMostPrivateBytes = 0x4000; // a DEVMODE counts its driver part in 16 bits

std::string WithResult(const char* what, HRESULT result)
{
    char text[128];
    std::snprintf(text, sizeof text, "%s (result %#010lx)", what,
                  static_cast<unsigned long>(static_cast<DWORD>(result)));
    return text;
}

} // namespace

PluginSession::PluginSession(CoreDriver& core, Selections& selections, IUnknown* helper)
    : core_(core), selections_(selections), helper_(helper ? helper : core.Helper())
{
}

// The plug-in lets go of the helpers before its module goes.
PluginSession::~PluginSession()
{
    plugin_.Reset();
}

std::string PluginSession::Start()
{
    heap_.Reset(HeapCreate(0, 0, 0));
    if (!heap_) return "no memory for the plug-in's heap";
    if (std::string problem = Create(); !problem.empty()) return problem;
    if (std::string problem = Introduce(); !problem.empty()) return problem;
    return MakePrivateDevmode();
}

std::string PluginSession::Create()
{
    if (!module_)
        return "PSTWUI.DLL does not load (error " + std::to_string(GetLastError()) +
               "); it belongs beside this program";
    ComPtr<IClassFactory> factory;
    HRESULT result =
        module_.GetClassObject(kPluginClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive()));
    if (FAILED(result)) return WithResult("the plug-in gives no class factory", result);
    result = factory->CreateInstance(nullptr, IID_IPrintOemUI2, reinterpret_cast<void**>(plugin_.Receive()));
    if (FAILED(result)) return WithResult("the plug-in gives no object", result);
    return {};
}

// Who are you, which helpers do you want, here they are, shall I hide my own pages.
std::string PluginSession::Introduce()
{
    DWORD needed = 0, answer = 0, helpers = 0;
    HRESULT result = plugin_->GetInfo(OEMGI_GETSIGNATURE, &answer, sizeof answer, &needed);
    if (FAILED(result)) return WithResult("the plug-in tells no signature", result);
    result = plugin_->GetInfo(OEMGI_GETVERSION, &answer, sizeof answer, &needed);
    if (FAILED(result)) return WithResult("the plug-in tells no version", result);
    result = plugin_->GetInfo(OEMGI_GETREQUESTEDHELPERINTERFACES, &helpers, sizeof helpers, &needed);
    if (FAILED(result)) helpers = 0;

    result = plugin_->PublishDriverInterface(helper_);
    if (SUCCEEDED(result) && (helpers & OEMPUBLISH_IPRINTCOREHELPER))
        result = plugin_->PublishDriverInterface(helper_);
    if (FAILED(result)) return WithResult("the plug-in takes no helper interface", result);
    plugin_->HideStandardUI(0); // this host has no pages of its own to hide
    return {};
}

// The defaults, with what was kept from earlier merged in.
std::string PluginSession::MakePrivateDevmode()
{
    OEMDMPARAM parameters{};
    parameters.cbSize = sizeof parameters;
    parameters.hModule = module_.Handle();
    HRESULT result = plugin_->DevMode(OEMDM_SIZE, &parameters);
    if (FAILED(result)) return WithResult("the plug-in tells no size of its DEVMODE part", result);
    if (parameters.cbBufSize > kMostPrivateBytes)
        return "the plug-in wants " + std::to_string(parameters.cbBufSize) + " bytes in the DEVMODE; " +
               std::to_string(kMostPrivateBytes) + " are there";

    privateDevmode_.assign(parameters.cbBufSize, 0);
    parameters.pOEMDMOut = privateDevmode_.data();
    result = plugin_->DevMode(OEMDM_DEFAULT, &parameters);
    if (FAILED(result)) return WithResult("the plug-in makes no defaults of its DEVMODE part", result);

    std::vector<BYTE> kept(selections_.PrivateDevmode().begin(), selections_.PrivateDevmode().end());
    if (kept.empty()) return {};
    kept.resize(std::max(kept.size(), privateDevmode_.size())); // whatever size the kept record claims
    parameters.pOEMDMIn = kept.data();
    result = plugin_->DevMode(OEMDM_MERGE, &parameters);
    if (FAILED(result)) return WithResult("the plug-in does not merge its DEVMODE part", result);
    return {};
}

void PluginSession::KeepPrivateDevmode()
{
    selections_.SetPrivateDevmode(privateDevmode_.data(), privateDevmode_.size());
}

} // namespace tintwerk
