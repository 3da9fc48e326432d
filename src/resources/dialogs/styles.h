// Control classes and styles that the dialog templates share.
#define IDC_STATIC -1

#define TRACKBAR "msctls_trackbar32"
#define UPDOWN "msctls_updown32"
#define TABCONTROL "SysTabControl32"

#define PAGE_STYLE DS_SHELLFONT | DS_CONTROL | WS_CHILD | WS_CAPTION
#define PANE_STYLE DS_SHELLFONT | DS_CONTROL | WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS

// Popups keep the order of the printer description: they never sort.
#define POPUP_LIST CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP

#define SLIDER TBS_AUTOTICKS | WS_TABSTOP
// The top of a vertical slider is its maximum.
#define VERTICAL_SLIDER TBS_VERT | TBS_AUTOTICKS | WS_TABSTOP

// Number fields: the edit before it is the buddy of the arrows, which takes arrow keys for them; its text is written
// by the page alone.
#define NUMBER_FIELD ES_AUTOHSCROLL | ES_RIGHT
#define SPIN UDS_ARROWKEYS | UDS_AUTOBUDDY

#define TABS WS_TABSTOP | WS_CLIPSIBLINGS

// A picture keeps the place that the template gives it, whatever its size; PICTURE_AS_IT_IS grows with the bitmap.
#define PICTURE SS_BITMAP | SS_CENTERIMAGE
#define PICTURE_AS_IT_IS SS_BITMAP
