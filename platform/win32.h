// The one door to the platform: the system's own headers on Windows, the headless layer elsewhere. The plug-in and the
// host include this file and never a system header, so the same lines compile for both targets.
#pragma once

#ifdef _WIN32

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
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>
#include <unknwn.h>
#include <winspool.h>

#include <compstui.h>
#include <winddiui.h>

#include <wchar.h>

#else

#include "platform/headless/windows.h"

#endif
