// The debugger output of this process: OutputDebugStringW of the program and of the plug-in is replaced by
// the sink, and what a module says before it can be hooked (its process attach) is seen as the exception that
// a debugger would see.
#include "platform/debug_sink.h"

#include "platform/function_hook.h"

namespace tintwerk {

namespace {

constexpr DWORD kPrintException = 0x40010006; // DBG_PRINTEXCEPTION_C: bytes with terminator, text
constexpr DWORD kPrintExceptionWide =
    0x4001000A; // DBG_PRINTEXCEPTION_WIDE_C: units with terminator, text, ...

DebugSink currentSink;
void* currentContext;
PVOID handler;

void WINAPI OnDebugOutput(const WCHAR* line)
{
    if (currentSink && line) currentSink(line, currentContext);
}

LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers)
{
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.NumberParameters < 2) return EXCEPTION_CONTINUE_SEARCH;
    if (record.ExceptionCode == kPrintExceptionWide) {
        OnDebugOutput(reinterpret_cast<const WCHAR*>(record.ExceptionInformation[1]));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    if (record.ExceptionCode == kPrintException) {
        WCHAR line[512] = {};
        MultiByteToWideChar(CP_ACP, 0, reinterpret_cast<const char*>(record.ExceptionInformation[1]), -1,
                            line, 511);
        OnDebugOutput(line);
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

void SetDebugSink(DebugSink sink, void* context)
{
    currentSink = sink;
    currentContext = context;
    if (sink && !handler) handler = AddVectoredExceptionHandler(1, OnException);
    if (!sink && handler) {
        RemoveVectoredExceptionHandler(handler);
        handler = nullptr;
    }
    ReplaceFunction("OutputDebugStringW", sink ? &OnDebugOutput : nullptr);
}

} // namespace tintwerk
