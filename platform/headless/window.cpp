// Window classes, the table of handles, creation and destruction, and the relations between windows.
#include "platform/headless/window.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>

#include "platform/headless/hookable.h"

namespace tintwerk::headless {

namespace {

std::atomic<DWORD> liveWindows{0};

// Every handle carries a generation that no other window of the process has had lately, so that a stale one
// is found out.
UINT_PTR NextGeneration()
{
    static std::atomic<UINT> last{0};
    return ++last % 0x7fff + 1;
}

struct ClassTable
{
    std::mutex mutex;
    std::vector<std::shared_ptr<const WindowClass>> classes;
    ATOM lastAtom = 0xC100;

    ClassTable()
    {
        // The names that GetClassNameW reports, with their window bytes.
        const struct
        {
            LPCWSTR name;
            WNDPROC procedure;
            int bytes;
            ATOM atom;
        } kinds[] = {
            {TEXT("#32770"), DefDlgProcW, DLGWINDOWEXTRA, kDialogClassAtom},
            {TEXT("Button"), ButtonProcedure, 0, 0x80},
            {TEXT("Edit"), EditProcedure, 0, 0x81},
            {TEXT("Static"), StaticProcedure, 0, 0x82},
            {TEXT("ComboBox"), ComboBoxProcedure, 0, 0x85},
            {TRACKBAR_CLASSW, TrackbarProcedure, 0, 0x90},
            {UPDOWN_CLASSW, UpDownProcedure, 0, 0x91},
            {WC_TABCONTROLW, TabProcedure, 0, 0x92},
            {TEXT("#32769"), DefWindowProcW, 0, 0x8001},
        };
        for (const auto& kind : kinds) {
            auto entry = std::make_shared<WindowClass>();
            entry->name = kind.name;
            entry->procedure = kind.procedure;
            entry->windowBytes = kind.bytes;
            entry->atom = kind.atom;
            classes.push_back(std::move(entry));
        }
    }
};

ClassTable& Classes()
{
    static ClassTable table;
    return table;
}

char16_t Folded(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

constexpr UINT_PTR kFirstHandle = 0x20;

HWND HandleFor(std::size_t slot)
{
    return reinterpret_cast<HWND>((NextGeneration() << 16) | (kFirstHandle + 2 * slot));
}

Window* Enter(std::unique_ptr<Window> window)
{
    ThreadState& thread = Thread();
    std::size_t slot = thread.slots.size();
    if (!thread.freeSlots.empty()) {
        slot = thread.freeSlots.back();
        thread.freeSlots.pop_back();
    } else {
        thread.slots.emplace_back();
    }
    window->handle = HandleFor(slot);
    thread.slots[slot].window = std::move(window);
    ++liveWindows;
    return thread.slots[slot].window.get();
}

std::size_t SlotOf(HWND handle)
{
    return ((reinterpret_cast<UINT_PTR>(handle) & 0xffff) - kFirstHandle) / 2;
}

void Leave(Window& window)
{
    ReleaseSurface(window);
    if (window.parent) std::erase(window.parent->children, &window);
    ThreadState& thread = Thread();
    const std::size_t slot = SlotOf(window.handle);
    thread.slots[slot].window.reset();
    thread.freeSlots.push_back(slot);
    --liveWindows;
}

// Styles that the window manager adds or takes away by itself.
void SettleStyles(Window& window)
{
    if (!(window.style & WS_CHILD) || (window.style & WS_POPUP)) {
        window.style |= WS_CLIPSIBLINGS;
        if (!(window.style & WS_POPUP)) window.style |= WS_CAPTION;
    }
    const bool raised =
        (window.exStyle & WS_EX_DLGMODALFRAME) ||
        (!(window.exStyle & WS_EX_STATICEDGE) && (window.style & (WS_DLGFRAME | WS_THICKFRAME)));
    window.exStyle = raised ? window.exStyle | WS_EX_WINDOWEDGE : window.exStyle & ~WS_EX_WINDOWEDGE;
}

void TellParent(Window& window, UINT event)
{
    if (window.IsChild() && !(window.exStyle & WS_EX_NOPARENTNOTIFY) && window.parent != &Desktop()) {
        const auto id = static_cast<WORD>(window.id);
        SendMessageW(window.parent->handle, WM_PARENTNOTIFY, MAKEWPARAM(event, id),
                     reinterpret_cast<LPARAM>(window.handle));
    }
}

void DestroyTree(HWND handle)
{
    // Owned windows go with their owner; children after their parent's WM_DESTROY, before its WM_NCDESTROY.
    SendMessageW(handle, WM_DESTROY, 0, 0);
    while (Window* const window = Peek(handle)) {
        if (window->children.empty()) break;
        const HWND child = window->children.front()->handle;
        window->children.front()->dying = true;
        DestroyTree(child);
    }
    if (!Peek(handle)) return;
    SendMessageW(handle, WM_NCDESTROY, 0, 0);
    if (Window* const window = Peek(handle)) {
        DropFromQueue(handle);
        ThreadState& thread = Thread();
        if (thread.focus == handle) thread.focus = nullptr;
        if (thread.active == handle) thread.active = nullptr;
        if (thread.capture == handle) thread.capture = nullptr;
        Leave(*window);
    }
}

std::vector<HWND> Descendants(const Window& window)
{
    std::vector<HWND> all;
    for (const Window* child : window.children) {
        all.push_back(child->handle);
        const std::vector<HWND> below = Descendants(*child);
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

std::vector<HWND> TopLevelWindows()
{
    std::vector<HWND> all;
    for (const Window* window : Desktop().children)
        all.push_back(window->handle);
    return all;
}

BOOL EnumerateHandles(const std::vector<HWND>& handles, WNDENUMPROC procedure, LPARAM lParam)
{
    for (const HWND handle : handles) {
        if (Peek(handle) && !procedure(handle, lParam)) return FALSE;
    }
    return TRUE;
}

bool Matches(const Window& window, LPCWSTR className, LPCWSTR text)
{
    return (!className || EqualIgnoringCase(window.windowClass->name, className)) &&
           (!text || window.text == text);
}

} // namespace

ThreadState::~ThreadState()
{
    for (Slot& slot : slots) {
        if (!slot.window) continue;
        ReleaseSurface(*slot.window);
        if (slot.window.get() != desktop) --liveWindows;
    }
}

ThreadState& Thread()
{
    thread_local ThreadState state;
    return state;
}

Window* Peek(HWND handle)
{
    ThreadState& thread = Thread();
    const UINT_PTR low = reinterpret_cast<UINT_PTR>(handle) & 0xffff;
    if (low < kFirstHandle) return nullptr;
    const std::size_t slot = (low - kFirstHandle) / 2;
    if (slot >= thread.slots.size()) return nullptr;
    Window* const window = thread.slots[slot].window.get();
    return window && window->handle == handle ? window : nullptr;
}

Window* Find(HWND handle)
{
    Window* const window = Peek(handle);
    if (!window) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return window;
}

Window& Desktop()
{
    ThreadState& thread = Thread();
    if (!thread.desktop) {
        auto window = std::make_unique<Window>();
        window->windowClass = FindClass(TEXT("#32769"), nullptr);
        window->procedure = DefWindowProcW;
        window->style = WS_POPUP | WS_VISIBLE;
        window->place = {0, 0, kScreenWidth, kScreenHeight};
        thread.desktop = Enter(std::move(window));
        --liveWindows; // the desktop is not one of the program's windows
    }
    return *thread.desktop;
}

Window* RootOf(Window& window)
{
    Window* root = &window;
    while (root->parent && root->parent != &Desktop())
        root = root->parent;
    return root;
}

bool IsSelfOrDescendant(const Window* window, const Window& ancestor)
{
    for (; window; window = window->parent) {
        if (window == &ancestor) return true;
    }
    return false;
}

DWORD WindowCount()
{
    return liveWindows;
}

bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    return std::ranges::equal(a, b, {}, Folded, Folded);
}

std::shared_ptr<const WindowClass> FindClass(LPCWSTR name, HINSTANCE module)
{
    ClassTable& table = Classes();
    const std::lock_guard lock(table.mutex);
    const std::shared_ptr<const WindowClass>* match = nullptr;
    for (const auto& entry : table.classes) {
        const bool same = IS_INTRESOURCE(name)
                              ? entry->atom == static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name))
                              : EqualIgnoringCase(entry->name, name);
        if (!same) continue;
        if (entry->module == module) return entry;
        if (!match) match = &entry;
    }
    return match ? *match : nullptr;
}

LRESULT NotifyCommand(const Window& control, WORD code)
{
    if (!control.parent) return 0;
    return SendMessageW(control.parent->handle, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(control.id), code),
                        reinterpret_cast<LPARAM>(control.handle));
}

LRESULT NotifyParent(const Window& control, NMHDR& header, UINT code)
{
    if (!control.parent) return 0;
    header.hwndFrom = control.handle;
    header.idFrom = static_cast<UINT_PTR>(control.id);
    header.code = code;
    return SendMessageW(control.parent->handle, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

ATOM WINAPI RegisterClassExW(const WNDCLASSEXW* windowClass)
{
    if (!windowClass || windowClass->cbSize != sizeof(WNDCLASSEXW) || !windowClass->lpszClassName) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    ClassTable& table = Classes();
    const std::lock_guard lock(table.mutex);
    for (const auto& entry : table.classes) {
        if (entry->module == windowClass->hInstance &&
            EqualIgnoringCase(entry->name, windowClass->lpszClassName)) {
            SetLastError(ERROR_CLASS_ALREADY_EXISTS);
            return 0;
        }
    }
    auto entry = std::make_shared<WindowClass>();
    entry->name = windowClass->lpszClassName;
    entry->procedure = windowClass->lpfnWndProc;
    entry->style = windowClass->style;
    entry->windowBytes = std::max(windowClass->cbWndExtra, 0);
    entry->module = windowClass->hInstance;
    entry->atom = ++table.lastAtom;
    table.classes.push_back(entry);
    return entry->atom;
}

BOOL WINAPI UnregisterClassW(LPCWSTR name, HINSTANCE module)
{
    const std::shared_ptr<const WindowClass> entry = name ? FindClass(name, module) : nullptr;
    if (!entry || entry->module != module || !entry->module) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    if (entry.use_count() > 2) { // held by the table, by this function, and by its windows
        SetLastError(ERROR_CLASS_HAS_WINDOWS);
        return FALSE;
    }
    const std::lock_guard lock(Classes().mutex);
    std::erase(Classes().classes, entry);
    return TRUE;
}

namespace {

HWND WINAPI MakeWindow(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int width,
                       int height, HWND parent, HMENU menuOrId, HINSTANCE module, LPVOID parameter)
{
    const std::shared_ptr<const WindowClass> windowClass = className ? FindClass(className, module) : nullptr;
    if (!windowClass) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const bool child = (style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
    if (child && !parent) {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    Window* const relative = parent ? Find(parent) : nullptr;
    if (parent && !relative) return nullptr;
    if (x == CW_USEDEFAULT) x = y = 0;
    if (width == CW_USEDEFAULT) {
        width = kScreenWidth / 2;
        height = kScreenHeight / 2;
    }

    auto fresh = std::make_unique<Window>();
    fresh->windowClass = windowClass;
    fresh->procedure = windowClass->procedure;
    fresh->parent = child ? relative : &Desktop();
    fresh->owner = child || !relative ? nullptr : RootOf(*relative)->handle;
    fresh->place = {x, y, x + std::max(width, 0), y + std::max(height, 0)};
    fresh->style = style & ~WS_VISIBLE;
    fresh->exStyle = exStyle;
    fresh->id = child ? reinterpret_cast<LONG_PTR>(menuOrId) : 0;
    fresh->module = module;
    fresh->bytes.resize(static_cast<std::size_t>(windowClass->windowBytes));
    SettleStyles(*fresh);
    Window* window = Enter(std::move(fresh));
    const HWND handle = window->handle;
    std::vector<Window*>& siblings = window->parent->children;
    siblings.insert(child ? siblings.end() : siblings.begin(), window);

    CREATESTRUCTW creation{
        parameter, module,    menuOrId, parent, height, width, y, x, static_cast<LONG>(style),
        text,      className, exStyle};
    if (!SendMessageW(handle, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&creation))) {
        if ((window = Peek(handle))) Leave(*window);
        return nullptr;
    }
    if (SendMessageW(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&creation)) == -1) {
        if (Peek(handle)) DestroyWindow(handle);
        return nullptr;
    }
    if (!(window = Peek(handle))) return nullptr;
    const RECT client = ClientOf(*window);
    SendMessageW(handle, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
    if (!(window = Peek(handle))) return nullptr;
    SendMessageW(handle, WM_MOVE, 0, MAKELPARAM(window->place.left, window->place.top));
    if ((window = Peek(handle))) TellParent(*window, WM_CREATE);
    if (Peek(handle) && (style & WS_VISIBLE)) ShowWindow(handle, SW_SHOW);
    return Peek(handle) ? handle : nullptr;
}

tintwerk::headless::Hookable<MakeWindow> createWindow{"CreateWindowExW"};

} // namespace

HWND WINAPI CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menuOrId, HINSTANCE module,
                            LPVOID parameter)
{
    return createWindow(exStyle, className, text, style, x, y, width, height, parent, menuOrId, module,
                        parameter);
}

BOOL WINAPI DestroyWindow(HWND handle)
{
    Window* const window = Find(handle);
    if (!window || window == &Desktop()) return FALSE;
    if (window->dying) return TRUE;
    window->dying = true;
    TellParent(*window, WM_DESTROY);
    if (Window* const still = Peek(handle); still && (still->style & WS_VISIBLE)) {
        if (still->IsChild())
            ShowWindow(handle, SW_HIDE);
        else
            SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    }
    for (const HWND other : TopLevelWindows()) {
        const Window* const owned = Peek(other);
        if (owned && owned->owner == handle) DestroyWindow(other);
    }
    if (Peek(handle)) DestroyTree(handle);
    return TRUE;
}

BOOL WINAPI IsWindow(HWND window)
{
    return Peek(window) != nullptr;
}

LRESULT WINAPI CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return procedure ? procedure(window, message, wParam, lParam) : 0;
}

int WINAPI GetClassNameW(HWND handle, LPWSTR name, int size)
{
    const Window* const window = Find(handle);
    if (!window || !name || size <= 0) return 0;
    const std::u16string& full = window->windowClass->name;
    const std::size_t length = std::min(full.size(), static_cast<std::size_t>(size) - 1);
    full.copy(name, length);
    name[length] = 0;
    return static_cast<int>(length);
}

HWND WINAPI GetParent(HWND handle)
{
    const Window* const window = Find(handle);
    if (!window) return nullptr;
    if (window->style & WS_POPUP) return window->owner;
    return window->IsChild() ? window->parent->handle : nullptr;
}

HWND WINAPI SetParent(HWND handle, HWND parent)
{
    Window* const window = Find(handle);
    Window* const next = parent ? Find(parent) : &Desktop();
    if (!window || !next || window == &Desktop() || IsSelfOrDescendant(next, *window)) return nullptr;
    Window* const previous = window->parent;
    std::erase(previous->children, window);
    window->parent = next;
    next->children.insert(next->children.begin(), window);
    return previous->handle;
}

HWND WINAPI GetAncestor(HWND handle, UINT which)
{
    Window* const window = Find(handle);
    if (!window || window == &Desktop()) return nullptr;
    switch (which) {
    case GA_PARENT:
        return window->parent->handle;
    case GA_ROOT:
        return RootOf(*window)->handle;
    case GA_ROOTOWNER: {
        Window* root = RootOf(*window);
        while (Window* const owner = Peek(root->owner))
            root = RootOf(*owner);
        return root->handle;
    }
    default:
        return nullptr;
    }
}

HWND WINAPI GetWindow(HWND handle, UINT which)
{
    const Window* const window = Find(handle);
    if (!window) return nullptr;
    if (which == GW_OWNER) return window->owner;
    if (which == GW_CHILD) return window->children.empty() ? nullptr : window->children.front()->handle;
    if (!window->parent) return nullptr;
    const std::vector<Window*>& siblings = window->parent->children;
    const auto own = std::ranges::find(siblings, window);
    switch (which) {
    case GW_HWNDFIRST:
        return siblings.front()->handle;
    case GW_HWNDLAST:
        return siblings.back()->handle;
    case GW_HWNDNEXT:
        return own + 1 == siblings.end() ? nullptr : (*(own + 1))->handle;
    case GW_HWNDPREV:
        return own == siblings.begin() ? nullptr : (*(own - 1))->handle;
    default:
        return nullptr;
    }
}

HWND WINAPI GetDesktopWindow()
{
    return Desktop().handle;
}

HWND WINAPI GetDlgItem(HWND dialog, int id)
{
    const Window* const window = Find(dialog);
    if (!window) return nullptr;
    for (const Window* child : window->children) {
        if (static_cast<int>(child->id) == id) return child->handle;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int WINAPI GetDlgCtrlID(HWND handle)
{
    const Window* const window = Find(handle);
    return window ? static_cast<int>(window->id) : 0;
}

BOOL WINAPI IsChild(HWND parent, HWND handle)
{
    const Window* const window = Peek(handle);
    const Window* const ancestor = Peek(parent);
    return window && ancestor && window != ancestor && IsSelfOrDescendant(window, *ancestor);
}

BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC procedure, LPARAM lParam)
{
    const Window* const window = parent ? Find(parent) : &Desktop();
    return window && EnumerateHandles(Descendants(*window), procedure, lParam);
}

BOOL WINAPI EnumThreadWindows(DWORD thread, WNDENUMPROC procedure, LPARAM lParam)
{
    if (thread != GetCurrentThreadId()) return TRUE; // another thread's windows are not seen from here
    return EnumerateHandles(TopLevelWindows(), procedure, lParam);
}

BOOL WINAPI EnumWindows(WNDENUMPROC procedure, LPARAM lParam)
{
    return EnumerateHandles(TopLevelWindows(), procedure, lParam);
}

HWND WINAPI FindWindowW(LPCWSTR className, LPCWSTR text)
{
    return FindWindowExW(nullptr, nullptr, className, text);
}

HWND WINAPI FindWindowExW(HWND parent, HWND after, LPCWSTR className, LPCWSTR text)
{
    const Window* const window = parent ? Find(parent) : &Desktop();
    if (!window) return nullptr;
    auto child = window->children.begin();
    if (after) {
        child = std::ranges::find(window->children, Peek(after));
        if (child == window->children.end()) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return nullptr;
        }
        ++child;
    }
    for (; child != window->children.end(); ++child) {
        if (Matches(**child, className, text)) return (*child)->handle;
    }
    return nullptr;
}

DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD process)
{
    if (!Find(window)) return 0;
    if (process) *process = GetCurrentProcessId();
    return GetCurrentThreadId();
}
