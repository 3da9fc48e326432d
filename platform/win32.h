// The one door to the platform: the system's own headers, the same on both targets. The plug-in and the host include this
// file and never a system header, so the same lines compile for both.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#ifndef STRICT
#define STRICT
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif

#ifndef _WIN32
#include "platform/headless/dialect.h"
#endif

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>
#include <unknwn.h>
#include <winspool.h>

#include <compstui.h>
#include <winddiui.h>

#include <wchar.h>
