#include "platform/function_hook.h"

#include <cstring>

#include "platform/headless/hookable.h"

namespace tintwerk {

namespace {

constinit headless::HookableBase* firstHookable = nullptr;

} // namespace

headless::HookableBase::HookableBase(const char* name) : name_(name), next_(firstHookable)
{
    firstHookable = this;
}

void* ReplaceFunction(const char* name, void* replacement)
{
    for (headless::HookableBase* hookable = firstHookable; hookable; hookable = hookable->Next()) {
        if (std::strcmp(hookable->Name(), name) == 0) {
            hookable->Replace(replacement);
            return hookable->Original();
        }
    }
    return nullptr;
}

} // namespace tintwerk
