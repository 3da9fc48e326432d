#include "src/events/document_events.h"

#include <cstddef>
#include <cstring>
#include <iterator>

#include "src/events/offline_warning.h"
#include "src/events/print_server.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kWantedEvents[] = {DOCUMENTEVENT_STARTDOCPRE, DOCUMENTEVENT_STARTDOCPOST};
constexpr UINT kWantedCount = std::size(kWantedEvents);
constexpr ULONG kFilterHead = offsetof(DOCEVENT_FILTER, aDocEventCall);

// The spooler counts in cElementsAllocated the events for which it has room behind the record; its buffer
// ends at outSize all the same.
void FillFilter(void* out, ULONG outSize)
{
    if (!out || outSize < kFilterHead) return;
    auto& filter = *static_cast<DOCEVENT_FILTER*>(out);
    Trace(TEXT("elementsReturned=%d\r\n"), static_cast<int>(filter.cElementsReturned));
    if (filter.cElementsAllocated < kWantedCount || outSize < kFilterHead + sizeof kWantedEvents) return;
    filter.cElementsReturned = kWantedCount;
    std::memcpy(static_cast<BYTE*>(out) + kFilterHead, kWantedEvents, sizeof kWantedEvents);
}

// A job without its number counts as job 0.
DWORD JobId(const void* in, ULONG inSize)
{
    DWORD id = 0;
    if (in && inSize >= sizeof id) std::memcpy(&id, in, sizeof id);
    return id;
}

bool Handle(HANDLE printer, INT event, ULONG inSize, const void* in, ULONG outSize, void* out,
            IPrintCoreHelperPS* helper)
{
    switch (event) {
    case DOCUMENTEVENT_CREATEDCPRE:
    case DOCUMENTEVENT_STARTDOCPRE:
        return true;
    case DOCUMENTEVENT_STARTDOCPOST:
        StartConfiguredPrintServer();
        WarnIfPrinterIsOffline(printer, JobId(in, inSize), helper);
        return true;
    case DOCUMENTEVENT_QUERYFILTER:
        FillFilter(out, outSize);
        return true;
    default:
        return false;
    }
}

} // namespace

HRESULT HandleDocumentEvent(HANDLE printer, INT event, ULONG inSize, PVOID in, ULONG outSize, PVOID out,
                            PINT result, IPrintCoreHelperPS* helper)
{
    Trace(TEXT("UI:  IOemUI: DocumentEvent entry. iEsc=%d\r\n"), event);
    if (result) *result = DOCUMENTEVENT_UNSUPPORTED;
    if (Handle(printer, event, inSize, in, outSize, out, helper) && result) *result = DOCUMENTEVENT_SUCCESS;
    return S_OK;
}

} // namespace tintwerk
