// The events of a print job, as the spooler reports them to the plug-in object.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// Handles one event; always returns S_OK, the outcome goes to *result: 1 handled, 0 not. helper may be null.
HRESULT HandleDocumentEvent(HANDLE printer, INT event, ULONG inSize, PVOID in, ULONG outSize, PVOID out,
                            PINT result, IPrintCoreHelperPS* helper);

} // namespace tintwerk
