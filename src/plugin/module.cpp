// Module entry and the two exports.
#include "platform/win32.h"

STDAPI DllGetClassObject(REFCLSID, REFIID, void**) { return CLASS_E_CLASSNOTAVAILABLE; }
STDAPI DllCanUnloadNow() { return S_OK; }
