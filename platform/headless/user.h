// Windows: the handle table, messages, dialogs from binary templates, window properties, rectangles, timers,
// message boxes. A window belongs to the thread that made it; its messages are handled in that thread's loop.
// Declarations carry the platform's names and values; the .cpp files of this folder hold the behaviour.
#pragma once

#include "platform/headless/types.h"

DECLARE_HANDLE(HACCEL);
DECLARE_HANDLE(HDWP);
using HRGN = struct HRGN__*;

// clang-format off
// Window styles.
constexpr DWORD WS_OVERLAPPED = 0x0, WS_POPUP = 0x80000000, WS_CHILD = 0x40000000, WS_MINIMIZE = 0x20000000,
    WS_VISIBLE = 0x10000000, WS_DISABLED = 0x8000000, WS_CLIPSIBLINGS = 0x4000000,
    WS_CLIPCHILDREN = 0x2000000, WS_MAXIMIZE = 0x1000000, WS_CAPTION = 0xC00000, WS_BORDER = 0x800000,
    WS_DLGFRAME = 0x400000, WS_VSCROLL = 0x200000, WS_HSCROLL = 0x100000, WS_SYSMENU = 0x80000,
    WS_THICKFRAME = 0x40000, WS_GROUP = 0x20000, WS_TABSTOP = 0x10000, WS_MINIMIZEBOX = 0x20000,
    WS_MAXIMIZEBOX = 0x10000, WS_OVERLAPPEDWINDOW = 0xCF0000, WS_POPUPWINDOW = 0x80880000;

// Extended window styles.
constexpr DWORD WS_EX_DLGMODALFRAME = 0x1, WS_EX_NOPARENTNOTIFY = 0x4, WS_EX_TOPMOST = 0x8,
    WS_EX_TRANSPARENT = 0x20, WS_EX_TOOLWINDOW = 0x80, WS_EX_WINDOWEDGE = 0x100, WS_EX_CLIENTEDGE = 0x200,
    WS_EX_CONTEXTHELP = 0x400, WS_EX_RIGHT = 0x1000, WS_EX_LEFT = 0x0, WS_EX_CONTROLPARENT = 0x10000,
    WS_EX_STATICEDGE = 0x20000, WS_EX_APPWINDOW = 0x40000;

// Dialog styles.
constexpr DWORD DS_ABSALIGN = 0x1, DS_SYSMODAL = 0x2, DS_3DLOOK = 0x4, DS_FIXEDSYS = 0x8,
    DS_NOFAILCREATE = 0x10, DS_LOCALEDIT = 0x20, DS_SETFONT = 0x40, DS_MODALFRAME = 0x80,
    DS_NOIDLEMSG = 0x100, DS_SETFOREGROUND = 0x200, DS_CONTROL = 0x400, DS_CENTER = 0x800,
    DS_CENTERMOUSE = 0x1000, DS_CONTEXTHELP = 0x2000, DS_SHELLFONT = 0x48;

// Class styles and sizes.
constexpr int CS_VREDRAW = 1, CS_HREDRAW = 2, CS_DBLCLKS = 8, CS_OWNDC = 32, CS_PARENTDC = 128,
    CS_GLOBALCLASS = 0x4000, DLGWINDOWEXTRA = 30, CW_USEDEFAULT = -2147483648;

// Window data.
constexpr int GWLP_WNDPROC = -4, GWLP_HINSTANCE = -6, GWLP_HWNDPARENT = -8, GWLP_USERDATA = -21,
    GWLP_ID = -12, GWL_STYLE = -16, GWL_EXSTYLE = -20, GWL_ID = -12, DWLP_MSGRESULT = 0;
constexpr UINT DWLP_DLGPROC = 8, DWLP_USER = 16;

// Relations.
constexpr int GW_HWNDFIRST = 0, GW_HWNDLAST = 1, GW_HWNDNEXT = 2, GW_HWNDPREV = 3, GW_OWNER = 4, GW_CHILD = 5,
    GA_PARENT = 1, GA_ROOT = 2, GA_ROOTOWNER = 3;

// Showing and placing.
constexpr int SW_HIDE = 0, SW_SHOWNORMAL = 1, SW_NORMAL = 1, SW_SHOWMINIMIZED = 2, SW_SHOWNOACTIVATE = 4,
    SW_SHOW = 5, SW_SHOWNA = 8, SW_RESTORE = 9, SWP_NOSIZE = 1, SWP_NOMOVE = 2, SWP_NOZORDER = 4,
    SWP_NOREDRAW = 8, SWP_NOACTIVATE = 0x10, SWP_FRAMECHANGED = 0x20, SWP_SHOWWINDOW = 0x40,
    SWP_HIDEWINDOW = 0x80, SWP_NOCOPYBITS = 0x100, SWP_NOOWNERZORDER = 0x200, SWP_NOSENDCHANGING = 0x400,
    RDW_INVALIDATE = 1, RDW_INTERNALPAINT = 2, RDW_ERASE = 4, RDW_VALIDATE = 8, RDW_NOERASE = 0x20,
    RDW_NOCHILDREN = 0x40, RDW_ALLCHILDREN = 0x80, RDW_UPDATENOW = 0x100, RDW_ERASENOW = 0x200,
    RDW_FRAME = 0x400;

// Messages.
constexpr int WM_NULL = 0, WM_CREATE = 1, WM_DESTROY = 2, WM_MOVE = 3, WM_SIZE = 5, WM_ACTIVATE = 6,
    WM_SETFOCUS = 7, WM_KILLFOCUS = 8, WM_ENABLE = 0xA, WM_SETREDRAW = 0xB, WM_SETTEXT = 0xC,
    WM_GETTEXT = 0xD, WM_GETTEXTLENGTH = 0xE, WM_PAINT = 0xF, WM_CLOSE = 0x10, WM_QUIT = 0x12,
    WM_ERASEBKGND = 0x14, WM_SHOWWINDOW = 0x18, WM_SETCURSOR = 0x20, WM_MOUSEACTIVATE = 0x21,
    WM_NEXTDLGCTL = 0x28, WM_DRAWITEM = 0x2B, WM_MEASUREITEM = 0x2C, WM_DELETEITEM = 0x2D, WM_SETFONT = 0x30,
    WM_GETFONT = 0x31, WM_WINDOWPOSCHANGING = 0x46, WM_WINDOWPOSCHANGED = 0x47, WM_NOTIFY = 0x4E,
    WM_STYLECHANGING = 0x7C, WM_STYLECHANGED = 0x7D, WM_NCCREATE = 0x81, WM_NCDESTROY = 0x82,
    WM_NCCALCSIZE = 0x83, WM_NCHITTEST = 0x84, WM_NCPAINT = 0x85, WM_GETDLGCODE = 0x87, WM_KEYFIRST = 0x100,
    WM_KEYDOWN = 0x100, WM_KEYUP = 0x101, WM_CHAR = 0x102, WM_SYSKEYDOWN = 0x104, WM_SYSKEYUP = 0x105,
    WM_SYSCHAR = 0x106, WM_KEYLAST = 0x109, WM_INITDIALOG = 0x110, WM_COMMAND = 0x111, WM_SYSCOMMAND = 0x112,
    WM_TIMER = 0x113, WM_HSCROLL = 0x114, WM_VSCROLL = 0x115, WM_CTLCOLOREDIT = 0x133,
    WM_CTLCOLORLISTBOX = 0x134, WM_CTLCOLORBTN = 0x135, WM_CTLCOLORDLG = 0x136, WM_CTLCOLORSTATIC = 0x138,
    WM_MOUSEFIRST = 0x200, WM_MOUSEMOVE = 0x200, WM_LBUTTONDOWN = 0x201, WM_LBUTTONUP = 0x202,
    WM_LBUTTONDBLCLK = 0x203, WM_RBUTTONDOWN = 0x204, WM_RBUTTONUP = 0x205, WM_MOUSEWHEEL = 0x20A,
    WM_MOUSELAST = 0x20E, WM_PARENTNOTIFY = 0x210, WM_CAPTURECHANGED = 0x215, WM_CUT = 0x300, WM_COPY = 0x301,
    WM_PASTE = 0x302, WM_CLEAR = 0x303, WM_PRINT = 0x317, WM_PRINTCLIENT = 0x318, WM_USER = 0x400,
    WM_APP = 0x8000, WM_CANCELMODE = 0x1F, WM_ACTIVATEAPP = 0x1C, WM_QUERYDRAGICON = 0x37;
constexpr int DM_GETDEFID = 1024, DM_SETDEFID = 1025, DM_REPOSITION = 1026, DC_HASDEFID = 0x534B;

// Activation, printing, message queue.
constexpr int WA_INACTIVE = 0, WA_ACTIVE = 1, PM_NOREMOVE = 0, PM_REMOVE = 1, USER_TIMER_MINIMUM = 10;
constexpr LONG PRF_NONCLIENT = 2, PRF_CLIENT = 4, PRF_ERASEBKGND = 8, PRF_CHILDREN = 0x10;

// What a control wants from the keyboard.
constexpr int DLGC_WANTARROWS = 1, DLGC_WANTTAB = 2, DLGC_WANTALLKEYS = 4, DLGC_WANTMESSAGE = 4,
    DLGC_HASSETSEL = 8, DLGC_DEFPUSHBUTTON = 0x10, DLGC_UNDEFPUSHBUTTON = 0x20, DLGC_RADIOBUTTON = 0x40,
    DLGC_WANTCHARS = 0x80, DLGC_STATIC = 0x100, DLGC_BUTTON = 0x2000;

// Keys and mouse buttons.
constexpr int VK_BACK = 8, VK_TAB = 9, VK_RETURN = 0xD, VK_SHIFT = 0x10, VK_CONTROL = 0x11, VK_ESCAPE = 0x1B,
    VK_SPACE = 0x20, VK_PRIOR = 0x21, VK_NEXT = 0x22, VK_END = 0x23, VK_HOME = 0x24, VK_LEFT = 0x25,
    VK_UP = 0x26, VK_RIGHT = 0x27, VK_DOWN = 0x28, VK_DELETE = 0x2E, VK_F4 = 0x73, MK_LBUTTON = 1,
    MK_SHIFT = 4, MK_CONTROL = 8;

// Scroll codes and bars.
constexpr int SB_HORZ = 0, SB_VERT = 1, SB_CTL = 2, SB_LINEUP = 0, SB_LINELEFT = 0, SB_LINEDOWN = 1,
    SB_LINERIGHT = 1, SB_PAGEUP = 2, SB_PAGEDOWN = 3, SB_THUMBPOSITION = 4, SB_THUMBTRACK = 5, SB_TOP = 6,
    SB_BOTTOM = 7, SB_ENDSCROLL = 8, SIF_RANGE = 1, SIF_PAGE = 2, SIF_POS = 4, SIF_TRACKPOS = 0x10,
    SIF_ALL = 0x17, SW_SCROLLCHILDREN = 1, SW_INVALIDATE = 2, SW_ERASE = 4;

// System metrics and colours.
constexpr int SM_CXSCREEN = 0, SM_CYSCREEN = 1, SM_CXVSCROLL = 2, SM_CYHSCROLL = 3, SM_CYCAPTION = 4,
    SM_CXBORDER = 5, SM_CYBORDER = 6, SM_CXDLGFRAME = 7, SM_CYDLGFRAME = 8, SM_CXFIXEDFRAME = 7,
    SM_CYFIXEDFRAME = 8, SM_CXFRAME = 32, SM_CYFRAME = 33, SM_CXEDGE = 45, SM_CYEDGE = 46, SM_CXICON = 11,
    SM_CYICON = 12, SM_CXSMICON = 49, SM_CYSMICON = 50, COLOR_SCROLLBAR = 0, COLOR_BACKGROUND = 1,
    COLOR_WINDOW = 5, COLOR_WINDOWFRAME = 6, COLOR_WINDOWTEXT = 8, COLOR_HIGHLIGHT = 13,
    COLOR_HIGHLIGHTTEXT = 14, COLOR_BTNFACE = 15, COLOR_3DFACE = 15, COLOR_BTNSHADOW = 16,
    COLOR_3DSHADOW = 16, COLOR_GRAYTEXT = 17, COLOR_BTNTEXT = 18, COLOR_BTNHIGHLIGHT = 20,
    COLOR_3DHIGHLIGHT = 20, COLOR_3DDKSHADOW = 21, COLOR_3DLIGHT = 22;

// Owner drawing.
constexpr int ODT_MENU = 1, ODT_LISTBOX = 2, ODT_COMBOBOX = 3, ODT_BUTTON = 4, ODT_STATIC = 5, ODT_TAB = 101,
    ODA_DRAWENTIRE = 1, ODA_SELECT = 2, ODA_FOCUS = 4, ODS_SELECTED = 1, ODS_GRAYED = 2, ODS_DISABLED = 4,
    ODS_CHECKED = 8, ODS_FOCUS = 16;

// Message boxes and standard buttons.
constexpr LONG MB_OK = 0, MB_OKCANCEL = 1, MB_ABORTRETRYIGNORE = 2, MB_YESNOCANCEL = 3, MB_YESNO = 4,
    MB_RETRYCANCEL = 5, MB_ICONHAND = 0x10, MB_ICONERROR = 0x10, MB_ICONSTOP = 0x10, MB_ICONQUESTION = 0x20,
    MB_ICONEXCLAMATION = 0x30, MB_ICONWARNING = 0x30, MB_ICONASTERISK = 0x40, MB_ICONINFORMATION = 0x40,
    MB_APPLMODAL = 0, MB_SYSTEMMODAL = 0x1000, MB_TASKMODAL = 0x2000, MB_SETFOREGROUND = 0x10000,
    MB_TOPMOST = 0x40000, MB_SERVICE_NOTIFICATION = 0x200000;
constexpr int IDOK = 1, IDCANCEL = 2, IDABORT = 3, IDRETRY = 4, IDIGNORE = 5, IDYES = 6, IDNO = 7,
    IDCLOSE = 8, IDHELP = 9;

// Notifications that every control shares.
constexpr UINT NM_FIRST = 0, NM_OUTOFMEMORY = 0xFFFFFFFF, NM_CLICK = 0U - 2U, NM_DBLCLK = 0U - 3U,
    NM_RETURN = 0U - 4U, NM_RCLICK = 0U - 5U, NM_SETFOCUS = 0U - 7U, NM_KILLFOCUS = 0U - 8U,
    NM_CUSTOMDRAW = 0U - 12U, NM_RELEASEDCAPTURE = 0U - 16U;

// Errors of the window manager.
constexpr DWORD ERROR_INVALID_INDEX = 1413,
    ERROR_CLASS_ALREADY_EXISTS = 1410, ERROR_CLASS_DOES_NOT_EXIST = 1411, ERROR_CANNOT_FIND_WND_CLASS = 1407,
    ERROR_TLW_WITH_WSCHILD = 1406, ERROR_CLASS_HAS_WINDOWS = 1412;
// clang-format on

#define HWND_TOP (static_cast<HWND>(nullptr))
#define HWND_BOTTOM (reinterpret_cast<HWND>(static_cast<LONG_PTR>(1)))
#define HWND_TOPMOST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1)))
#define HWND_NOTOPMOST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-2)))
#define HWND_DESKTOP (static_cast<HWND>(nullptr))
#define HWND_MESSAGE (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-3)))
#define IDC_ARROW MAKEINTRESOURCEW(32512)
#define IDC_WAIT MAKEINTRESOURCEW(32514)
#define IDI_APPLICATION MAKEINTRESOURCEW(32512)
#define GET_X_LPARAM(value) (static_cast<int>(static_cast<short>(LOWORD(value))))
#define GET_Y_LPARAM(value) (static_cast<int>(static_cast<short>(HIWORD(value))))

using WNDPROC = LRESULT(CALLBACK*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
using DLGPROC = INT_PTR(CALLBACK*)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND window, LPARAM lParam);
using PROPENUMPROCW = BOOL(CALLBACK*)(HWND window, LPCWSTR name, HANDLE value);
using TIMERPROC = void(CALLBACK*)(HWND window, UINT message, UINT_PTR id, DWORD time);

struct MSG
{
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using LPMSG = MSG*;
struct WNDCLASSEXW
{
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH__* hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
    HICON hIconSm;
};
struct CREATESTRUCTW
{
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};
using LPCREATESTRUCTW = CREATESTRUCTW*;
struct WINDOWPOS
{
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};
struct STYLESTRUCT
{
    DWORD styleOld;
    DWORD styleNew;
};
struct PAINTSTRUCT
{
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
struct NMHDR
{
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};
using LPNMHDR = NMHDR*;
struct DRAWITEMSTRUCT
{
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;
struct SCROLLINFO
{
    UINT cbSize;
    UINT fMask;
    int nMin;
    int nMax;
    UINT nPage;
    int nPos;
    int nTrackPos;
};
// Dialog templates are read as bytes; these records exist for programs that build one in memory.
#pragma pack(push, 2)
struct DLGTEMPLATE
{
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;
    short x;
    short y;
    short cx;
    short cy;
};
struct DLGITEMTEMPLATE
{
    DWORD style;
    DWORD dwExtendedStyle;
    short x;
    short y;
    short cx;
    short cy;
    WORD id;
};
#pragma pack(pop)
using LPDLGTEMPLATEW = DLGTEMPLATE*;
using LPCDLGTEMPLATEW = const DLGTEMPLATE*;
using LPCDLGTEMPLATE = const DLGTEMPLATE*;

// Classes, creation, destruction.
ATOM WINAPI RegisterClassExW(const WNDCLASSEXW* windowClass);
BOOL WINAPI UnregisterClassW(LPCWSTR name, HINSTANCE module);
HWND WINAPI CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menuOrId, HINSTANCE module,
                            LPVOID parameter);
BOOL WINAPI DestroyWindow(HWND window);
BOOL WINAPI IsWindow(HWND window);
LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
int WINAPI GetClassNameW(HWND window, LPWSTR name, int size);

// Relations.
HWND WINAPI GetParent(HWND window);
HWND WINAPI SetParent(HWND window, HWND parent);
HWND WINAPI GetAncestor(HWND window, UINT which);
HWND WINAPI GetWindow(HWND window, UINT which);
HWND WINAPI GetDesktopWindow();
HWND WINAPI GetDlgItem(HWND dialog, int id);
int WINAPI GetDlgCtrlID(HWND window);
BOOL WINAPI IsChild(HWND parent, HWND window);
// All descendants, from a list taken at the start; windows that are gone when their turn comes are passed
// over.
BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC procedure, LPARAM lParam);
BOOL WINAPI EnumThreadWindows(DWORD thread, WNDENUMPROC procedure, LPARAM lParam);
BOOL WINAPI EnumWindows(WNDENUMPROC procedure, LPARAM lParam);
HWND WINAPI FindWindowW(LPCWSTR className, LPCWSTR text);
HWND WINAPI FindWindowExW(HWND parent, HWND after, LPCWSTR className, LPCWSTR text);
DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD process);

// Window data.
LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index);
LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
LONG WINAPI GetWindowLongW(HWND window, int index);
LONG WINAPI SetWindowLongW(HWND window, int index, LONG value);
BOOL WINAPI SetPropW(HWND window, LPCWSTR name, HANDLE value);
HANDLE WINAPI GetPropW(HWND window, LPCWSTR name);
HANDLE WINAPI RemovePropW(HWND window, LPCWSTR name);
BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text);
int WINAPI GetWindowTextW(HWND window, LPWSTR text, int size);
int WINAPI GetWindowTextLengthW(HWND window);
BOOL WINAPI SetDlgItemTextW(HWND dialog, int id, LPCWSTR text);
UINT WINAPI GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int size);

// Messages.
LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam); // texts are 8-bit
LRESULT WINAPI SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void WINAPI PostQuitMessage(int code);
// Never waits for ever: a thread with no messages, timers or unpainted windows gets WM_QUIT's answer, 0.
BOOL WINAPI GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
BOOL WINAPI PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove);
BOOL WINAPI TranslateMessage(const MSG* message);
LRESULT WINAPI DispatchMessageW(const MSG* message);
BOOL WINAPI IsDialogMessageW(HWND dialog, LPMSG message);
UINT WINAPI RegisterWindowMessageW(LPCWSTR name);
UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
BOOL WINAPI KillTimer(HWND window, UINT_PTR id);
SHORT WINAPI GetKeyState(int key); // no key is ever down
HWND WINAPI SetCapture(HWND window);
BOOL WINAPI ReleaseCapture();
HWND WINAPI GetCapture();

// Showing, enabling, focus.
BOOL WINAPI ShowWindow(HWND window, int command);
BOOL WINAPI IsWindowVisible(HWND window);
BOOL WINAPI EnableWindow(HWND window, BOOL enable);
BOOL WINAPI IsWindowEnabled(HWND window);
HWND WINAPI SetFocus(HWND window);
HWND WINAPI GetFocus();
HWND WINAPI GetActiveWindow();
HWND WINAPI SetActiveWindow(HWND window);
HWND WINAPI GetForegroundWindow();
BOOL WINAPI SetForegroundWindow(HWND window);

// Places. Rectangles of the screen in pixels, unless a function says otherwise.
BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL WINAPI BringWindowToTop(HWND window);
BOOL WINAPI GetWindowRect(HWND window, LPRECT rectangle);
BOOL WINAPI GetClientRect(HWND window, LPRECT rectangle);
int WINAPI MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count);
BOOL WINAPI ClientToScreen(HWND window, LPPOINT point);
BOOL WINAPI ScreenToClient(HWND window, LPPOINT point);
BOOL WINAPI AdjustWindowRectEx(LPRECT rectangle, DWORD style, BOOL menu, DWORD exStyle);
BOOL WINAPI SetRect(LPRECT rectangle, int left, int top, int right, int bottom);
BOOL WINAPI IsRectEmpty(const RECT* rectangle);
BOOL WINAPI PtInRect(const RECT* rectangle, POINT point);
BOOL WINAPI OffsetRect(LPRECT rectangle, int x, int y);
BOOL WINAPI InflateRect(LPRECT rectangle, int x, int y);
BOOL WINAPI EqualRect(const RECT* a, const RECT* b);
int WINAPI SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw);
BOOL WINAPI GetScrollInfo(HWND window, int bar, SCROLLINFO* info);

// Painting.
BOOL WINAPI InvalidateRect(HWND window, const RECT* rectangle, BOOL erase);
BOOL WINAPI ValidateRect(HWND window, const RECT* rectangle);
BOOL WINAPI UpdateWindow(HWND window);
BOOL WINAPI RedrawWindow(HWND window, const RECT* rectangle, HRGN region, UINT flags);
HDC WINAPI BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* paint);

// Dialogs.
HWND WINAPI CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM lParam);
HWND WINAPI CreateDialogIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialog, HWND parent,
                                       DLGPROC procedure, LPARAM lParam);
INT_PTR WINAPI DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM lParam);
INT_PTR WINAPI DialogBoxIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialog, HWND parent,
                                       DLGPROC procedure, LPARAM lParam);
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result);
LRESULT WINAPI DefDlgProcW(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
LONG WINAPI GetDialogBaseUnits();
BOOL WINAPI MapDialogRect(HWND dialog, LPRECT rectangle);
HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT check);
UINT WINAPI IsDlgButtonChecked(HWND dialog, int id);

// Message boxes are pressed OK at once, unless the host or a test has put its own function in the place of
// MessageBoxW.
int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);
int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
BOOL WINAPI MessageBeep(UINT type);

// Whether a user sees the process's windows: its window station says so.
using HWINSTA = struct HWINSTA__*;
constexpr int UOI_FLAGS = 1;
constexpr DWORD WSF_VISIBLE = 0x1;
struct USEROBJECTFLAGS
{
    BOOL fInherit;
    BOOL fReserved;
    DWORD dwFlags;
};
HWINSTA WINAPI GetProcessWindowStation();
BOOL WINAPI GetUserObjectInformationW(HANDLE object, int kind, LPVOID information, DWORD size,
                                      LPDWORD needed);

int WINAPI GetSystemMetrics(int index);
DWORD WINAPI GetSysColor(int index);
HBRUSH__* WINAPI GetSysColorBrush(int index);
HCURSOR WINAPI LoadCursorW(HINSTANCE module, LPCWSTR name);
HICON WINAPI LoadIconW(HINSTANCE module, LPCWSTR name);
HCURSOR WINAPI SetCursor(HCURSOR cursor);
