#include "host/sheet/option_items_page.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "host/sheet/pictograms.h"
#include "host/sheet/standard_texts.h"

namespace tintwerk {

namespace {

// Control numbers; an item's number is added to the first of each kind.
constexpr int kHeadingId = 4000;
constexpr int kLabelId = 5000; // also the frame of a group
constexpr int kComboId = 6000;
constexpr int kPictureId = 7000;
constexpr int kRadioId = 8000; // kMostRadios numbers an item
constexpr int kMostRadios = 4;
constexpr int kMostItems = 900;
constexpr int kMostOptions = 1000;

constexpr WORD kButtonClass = 0x80;
constexpr WORD kStaticClass = 0x82;
constexpr WORD kComboClass = 0x85;

// Measures in dialog units.
constexpr int kPageWidth = 252, kPageHeight = 215;
constexpr int kMargin = 7, kGap = 6;
constexpr int kLine = 13;    // one radio button
constexpr int kRow = 17;     // one labelled combo box
constexpr int kCombo = 12;   // a closed combo box
constexpr int kCaption = 14; // a group's frame down to its first line
constexpr int kPicture = 24;

// From dialog units.
RECT Pixels(HWND page, int x, int y, int width, int height)
{
    RECT pixels{x, y, width, height};
    MapDialogRect(page, &pixels);
    return pixels;
}

int PixelsDown(HWND page, int units)
{
    return static_cast<int>(Pixels(page, 0, units, 0, 0).top);
}

bool IsHeader(const OPTITEM& item)
{
    return item.pOptType == nullptr;
}

LONG CheckType(const OPTTYPE& type)
{
    if (type.cbSize != sizeof(OPTTYPE)) return ERR_CPSUI_INVALID_OPTTYPE_CBSIZE;
    if (type.Type != TVOT_2STATES && type.Type != TVOT_3STATES && type.Type != TVOT_COMBOBOX &&
        type.Type != TVOT_LISTBOX)
        return ERR_CPSUI_INVALID_TVOT_TYPE;
    if (type.Count > kMostOptions) return ERR_CPSUI_INVALID_OPTTYPE_COUNT;
    if (type.Count > 0 && !type.pOptParam) return ERR_CPSUI_NULL_POPTPARAM;
    for (int i = 0; i < type.Count; ++i) {
        if (type.pOptParam[i].cbSize != sizeof(OPTPARAM)) return ERR_CPSUI_INVALID_OPTPARAM_CBSIZE;
    }
    return 0;
}

} // namespace

LONG OptionItemsPage::Check(const COMPROPSHEETUI* description)
{
    if (!description || description->cbSize != sizeof(COMPROPSHEETUI)) return ERR_CPSUI_INVALID_PDATA;
    if (!description->pCallerName) return ERR_CPSUI_NULL_CALLERNAME;
    if (!description->pOptItemName) return ERR_CPSUI_NULL_OPTITEMNAME;
    if (!description->pOptItem) return ERR_CPSUI_NULL_POPTITEM;
    if (description->cOptItem == 0 || description->cOptItem > kMostItems) return ERR_CPSUI_ZERO_OPTITEM;
    for (int i = 0; i < description->cOptItem; ++i) {
        const OPTITEM& item = description->pOptItem[i];
        if (item.cbSize != sizeof(OPTITEM)) return ERR_CPSUI_INVALID_OPTITEM_CBSIZE;
        if (const LONG problem = IsHeader(item) ? 0 : CheckType(*item.pOptType)) return problem;
    }
    return 0;
}

OptionItemsPage::OptionItemsPage(const COMPROPSHEETUI& description, bool german,
                                 std::function<void()> applied)
    : description_(description), german_(german),
      isDocumentPage_(description.pDlgPage == CPSUI_PDLGPAGE_DOCPROP), applied_(std::move(applied))
{
    BuildTemplate();
    page_.dwSize = sizeof page_;
    page_.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE;
    page_.hInstance = GetModuleHandleW(nullptr);
    page_.pResource = reinterpret_cast<LPCDLGTEMPLATEW>(template_.data());
    page_.pszTitle =
        isDocumentPage_ ? TEXT("Layout") : OptionText(MAKEINTRESOURCEW(IDS_CPSUI_ADVANCED), german);
    page_.pfnDlgProc = Procedure;
    page_.lParam = reinterpret_cast<LPARAM>(this);
}

const WCHAR* OptionItemsPage::ItemText(int item) const
{
    return OptionText(Item(item).pName, german_);
}

int OptionItemsPage::OptionCount(int item) const
{
    return IsHeader(Item(item)) ? 0 : Item(item).pOptType->Count;
}

const WCHAR* OptionItemsPage::OptionTextOf(int item, int option) const
{
    return OptionText(Item(item).pOptType->pOptParam[option].pData, german_);
}

int OptionItemsPage::FindItem(std::string_view feature, const Ppd& ppd) const
{
    const PpdFeature* const known = ppd.Find(feature);
    for (int i = 0; i < ItemCount(); ++i) {
        const StandardText* const text = FindStandardText(Item(i).pName);
        if (text && (feature == text->keyword ||
                     (text->keyword.starts_with('%') && feature == text->keyword.substr(1))))
            return i;
        if (known && OptionCount(i) > 0 && Utf8FromWide(ItemText(i)) == known->text) return i;
    }
    return -1;
}

int OptionItemsPage::FindOption(int item, std::string_view feature, std::string_view option,
                                const Ppd& ppd) const
{
    const PpdOption* const known = ppd.Find(feature, option);
    const std::string_view text = known ? known->text : option;
    for (int i = 0; i < OptionCount(item); ++i) {
        const StandardText* const standard = FindStandardText(Item(item).pOptType->pOptParam[i].pData);
        if (standard ? standard->keyword == option : Utf8FromWide(OptionTextOf(item, i)) == text) return i;
    }
    return -1;
}

bool OptionItemsPage::HasRadioButtons(int item) const
{
    return isDocumentPage_ && !IsHeader(Item(item)) && Item(item).pOptType->Type <= TVOT_3STATES &&
           OptionCount(item) <= kMostRadios;
}

bool OptionItemsPage::HasPicture(int item) const
{
    for (int option = 0; option < OptionCount(item); ++option) {
        if (HasPictogram(Item(item).pOptType->pOptParam[option].IconID)) return true;
    }
    return false;
}

// --- The controls

void OptionItemsPage::AddControl(DWORD style, WORD windowClass, int id, const WCHAR* text)
{
    if (template_.size() % 2 != 0) template_.push_back(0); // items begin at multiples of four bytes
    DLGITEMTEMPLATE item{};
    item.style = style | WS_CHILD | WS_VISIBLE;
    item.id = static_cast<WORD>(id);
    const std::size_t at = template_.size();
    template_.resize(at + sizeof item / sizeof(WORD));
    std::memcpy(&template_[at], &item, sizeof item);
    template_.insert(template_.end(), {0xFFFF, windowClass});
    for (const WCHAR unit : WideView(text))
        template_.push_back(static_cast<WORD>(unit));
    template_.insert(template_.end(), {0, 0}); // the text's end, no creation data
    ++controls_;
}

void OptionItemsPage::BuildTemplate()
{
    DLGTEMPLATE dialog{};
    dialog.style = WS_CHILD | WS_VSCROLL | DS_SETFONT | DS_3DLOOK | DS_CONTROL;
    dialog.cx = kPageWidth;
    dialog.cy = kPageHeight;
    template_.resize(sizeof dialog / sizeof(WORD));
    template_.insert(template_.end(), {0, 0, 0, 8}); // no menu, the standard class, no caption, eight points
    for (const WCHAR unit : WideView(TEXT("MS Shell Dlg")))
        template_.push_back(static_cast<WORD>(unit));
    template_.push_back(0);

    if (!isDocumentPage_)
        AddControl(SS_LEFT | SS_NOPREFIX, kStaticClass, kHeadingId,
                   OptionText(description_.pOptItemName, german_));
    for (int i = 0; i < ItemCount(); ++i) {
        const bool framed = IsHeader(Item(i)) || isDocumentPage_;
        AddControl(framed ? BS_GROUPBOX | WS_GROUP : SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE,
                   framed ? kButtonClass : kStaticClass, kLabelId + i, ItemText(i));
        if (IsHeader(Item(i))) continue;
        if (!HasRadioButtons(i)) {
            AddControl(CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | WS_GROUP, kComboClass, kComboId + i,
                       TEXT(""));
            continue;
        }
        for (int option = 0; option < OptionCount(i); ++option) {
            AddControl(BS_AUTORADIOBUTTON | (option == 0 ? WS_TABSTOP | WS_GROUP : 0), kButtonClass,
                       kRadioId + kMostRadios * i + option, OptionTextOf(i, option));
        }
        if (HasPicture(i)) AddControl(SS_OWNERDRAW, kStaticClass, kPictureId + i, TEXT(""));
    }
    dialog.cdit = controls_;
    std::memcpy(template_.data(), &dialog, sizeof dialog);
}

void OptionItemsPage::Fill()
{
    for (int i = 0; i < ItemCount(); ++i) {
        const HWND combo = GetDlgItem(window_, kComboId + i);
        for (int option = 0; combo && option < OptionCount(i); ++option)
            SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(OptionTextOf(i, option)));
        if (combo) SendMessageW(combo, CB_SETCURSEL, Item(i).Sel, 0);
        for (int option = 0; HasRadioButtons(i) && option < OptionCount(i); ++option)
            CheckDlgButton(window_, kRadioId + kMostRadios * i + option,
                           option == Item(i).Sel ? BST_CHECKED : BST_UNCHECKED);
    }
}

// --- Where they stand

void OptionItemsPage::Place(int id, int x, int y, int width, int height)
{
    const RECT place = Pixels(window_, x, y, width, height);
    if (const HWND control = GetDlgItem(window_, id))
        SetWindowPos(control, nullptr, place.left, place.top - scrolled_, place.right, place.bottom,
                     SWP_NOZORDER | SWP_NOACTIVATE);
}

int OptionItemsPage::GroupHeight(int item) const
{
    if (!HasRadioButtons(item)) return kCaption + kRow;
    return kCaption + std::max(OptionCount(item) * kLine, HasPicture(item) ? kPicture : 0) + 4;
}

void OptionItemsPage::PlaceCombo(int item, int x, int y, int width)
{
    // The height of a combo box is that of its open list.
    Place(kComboId + item, x, y, width, kCombo + 9 * std::clamp(OptionCount(item), 2, 12));
}

void OptionItemsPage::PlaceRadioGroup(int item, int x, int y, int width)
{
    const int height = GroupHeight(item);
    Place(kLabelId + item, x, y, width, height);
    if (!HasRadioButtons(item)) return PlaceCombo(item, x + kGap, y + kCaption, width - 2 * kGap);
    const int pictureRoom = HasPicture(item) ? kPicture + kGap : 0;
    for (int option = 0; option < OptionCount(item); ++option)
        Place(kRadioId + kMostRadios * item + option, x + kGap, y + kCaption + option * kLine,
              width - 2 * kGap - pictureRoom, 10);
    Place(kPictureId + item, x + width - kGap - kPicture, y + kCaption, kPicture, kPicture);
}

// Two columns; the next item goes where there is more room.
void OptionItemsPage::ArrangeDocument(int width)
{
    const int column = (width - 2 * kMargin - kGap) / 2;
    int left = kMargin, right = kMargin;
    for (int i = 0; i < ItemCount(); ++i) {
        int& y = left <= right ? left : right;
        PlaceRadioGroup(i, &y == &left ? kMargin : kMargin + column + kGap, y, column);
        y += GroupHeight(i) + kGap;
    }
    SetScrollRange(std::max(left, right));
}

// A frame around the items of each header, each item with its label on the left.
void OptionItemsPage::ArrangeList(int width)
{
    const int inner = width - 2 * kMargin - 2 * kGap;
    const int labelWidth = inner * 9 / 20;
    Place(kHeadingId, kMargin, kMargin, width - 2 * kMargin, 10);
    int y = kMargin + kCaption;
    int frame = -1, frameTop = y;
    const auto closeFrame = [&] {
        if (frame < 0) return;
        Place(kLabelId + frame, kMargin, frameTop, width - 2 * kMargin, y - frameTop);
        y += kGap;
    };
    for (int i = 0; i < ItemCount(); ++i) {
        if (IsHeader(Item(i))) {
            closeFrame();
            frame = i;
            frameTop = y;
            y += kCaption;
            continue;
        }
        Place(kLabelId + i, kMargin + kGap, y, labelWidth - kGap, kCombo);
        PlaceCombo(i, kMargin + kGap + labelWidth, y, inner - labelWidth);
        y += kRow;
    }
    closeFrame();
    SetScrollRange(y);
}

void OptionItemsPage::Arrange()
{
    if (arranging_) return; // the scroll bar's coming changes the page's size
    arranging_ = true;
    LONG before = -1;
    for (int pass = 0; pass < 2 && before != ClientArea().right; ++pass) {
        before = ClientArea().right;
        const LONG units = Pixels(window_, 1000, 0, 0, 0).left;
        const int width = std::max(units > 0 ? static_cast<int>(before * 1000 / units) : 0, 120);
        if (isDocumentPage_)
            ArrangeDocument(width);
        else
            ArrangeList(width);
    }
    arranging_ = false;
}

// --- Scrolling

RECT OptionItemsPage::ClientArea() const
{
    RECT client{};
    GetClientRect(window_, &client);
    return client;
}

void OptionItemsPage::SetScrollRange(int height)
{
    height_ = PixelsDown(window_, height);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = height_ - 1;
    info.nPage = static_cast<UINT>(ClientArea().bottom);
    info.nPos = scrolled_;
    SetScrollInfo(window_, SB_VERT, &info, TRUE);
}

void OptionItemsPage::ScrollTo(int position)
{
    position = std::clamp(position, 0, std::max(0, height_ - static_cast<int>(ClientArea().bottom)));
    if (position == scrolled_) return;
    scrolled_ = position;
    Arrange();
    InvalidateRect(window_, nullptr, TRUE);
}

void OptionItemsPage::Scroll(int code, int thumb)
{
    const int line = PixelsDown(window_, kRow), page = static_cast<int>(ClientArea().bottom);
    const int steps[] = {-line, line, -page, page}; // of SB_LINEUP, SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN
    if (code <= SB_PAGEDOWN) return ScrollTo(scrolled_ + steps[code]);
    if (code == SB_THUMBTRACK || code == SB_THUMBPOSITION) return ScrollTo(thumb);
    if (code == SB_TOP || code == SB_BOTTOM) ScrollTo(code == SB_TOP ? 0 : height_);
}

// A control that gets the keyboard's attention comes into view.
void OptionItemsPage::Reveal(HWND control)
{
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    const int margin = PixelsDown(window_, kGap);
    const int above = static_cast<int>(place.top) - margin;
    const int below = static_cast<int>(place.bottom - ClientArea().bottom) + margin;
    if (above < 0)
        ScrollTo(scrolled_ + above);
    else if (below > 0)
        ScrollTo(scrolled_ + below);
}

// --- What the user does

LONG OptionItemsPage::TellOwner(WORD reason, OPTITEM& current, LONG previous, LONG result)
{
    if (!description_.pfnCallBack) return CPSUICB_ACTION_NONE;
    CPSUICBPARAM parameters{};
    parameters.cbSize = sizeof parameters;
    parameters.Reason = reason;
    parameters.hDlg = window_;
    parameters.pOptItem = description_.pOptItem;
    parameters.cOptItem = description_.cOptItem;
    parameters.pCurItem = &current;
    parameters.OldSel = previous;
    parameters.UserData = description_.UserData;
    parameters.Result = static_cast<DWORD>(result);
    return description_.pfnCallBack(&parameters);
}

void OptionItemsPage::Select(int item, int option)
{
    OPTITEM& target = description_.pOptItem[item];
    if (option < 0 || option >= OptionCount(item) || target.Sel == option) return;
    const LONG previous = std::exchange(target.Sel, option);
    target.Flags |= OPTIF_CHANGED;
    if (const HWND picture = GetDlgItem(window_, kPictureId + item)) InvalidateRect(picture, nullptr, TRUE);
    if (target.Flags & OPTIF_CALLBACK) TellOwner(CPSUICB_REASON_SEL_CHANGED, target, previous, 0);
    SendMessageW(GetParent(window_), PSM_CHANGED, reinterpret_cast<WPARAM>(window_), 0);
}

std::optional<OptionItemsPage::Choice> OptionItemsPage::ChoiceAt(int id, int code) const
{
    const int radio = id - kRadioId, combo = id - kComboId;
    if (code == BN_CLICKED && radio >= 0 && radio < kMostRadios * ItemCount())
        return Choice{radio / kMostRadios, radio % kMostRadios};
    if (code == CBN_SELCHANGE && combo >= 0 && combo < ItemCount())
        return Choice{combo, static_cast<int>(SendMessageW(GetDlgItem(window_, id), CB_GETCURSEL, 0, 0))};
    return std::nullopt;
}

void OptionItemsPage::OnCommand(int id, int code, HWND control)
{
    if (const std::optional<Choice> choice = ChoiceAt(id, code)) Select(choice->item, choice->option);
    if (code == CBN_SETFOCUS) Reveal(control);
}

bool OptionItemsPage::Choose(int item, int option)
{
    if (option < 0 || option >= OptionCount(item)) return false;
    if (HasRadioButtons(item)) {
        SendMessageW(GetDlgItem(window_, kRadioId + kMostRadios * item + option), BM_CLICK, 0, 0);
        return true;
    }
    const HWND combo = GetDlgItem(window_, kComboId + item);
    SendMessageW(combo, CB_SETCURSEL, option, 0);
    SendMessageW(window_, WM_COMMAND, MAKEWPARAM(kComboId + item, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
    return true;
}

// False when the owner of the items wants the sheet to stay.
bool OptionItemsPage::Apply()
{
    if (TellOwner(CPSUICB_REASON_APPLYNOW, *description_.pOptItem, 0, CPSUI_OK) ==
        CPSUICB_ACTION_NO_APPLY_EXIT)
        return false;
    for (int i = 0; i < ItemCount(); ++i)
        description_.pOptItem[i].Flags &= ~static_cast<DWORD>(OPTIF_CHANGED);
    applied_();
    return true;
}

void OptionItemsPage::DrawPicture(const DRAWITEMSTRUCT& draw) const
{
    const int item = static_cast<int>(draw.CtlID) - kPictureId;
    // The page's own background, whatever the theme makes of it.
    auto* background =
        reinterpret_cast<HBRUSH>(SendMessageW(window_, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(draw.hDC),
                                              reinterpret_cast<LPARAM>(draw.hwndItem)));
    FillRect(draw.hDC, &draw.rcItem, background ? background : GetSysColorBrush(COLOR_BTNFACE));
    if (item < 0 || item >= ItemCount() || Item(item).Sel < 0 || Item(item).Sel >= OptionCount(item)) return;
    DrawPictogram(draw.hDC, draw.rcItem, Item(item).pOptType->pOptParam[Item(item).Sel].IconID);
}

INT_PTR CALLBACK OptionItemsPage::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        auto* const self =
            reinterpret_cast<OptionItemsPage*>(reinterpret_cast<const PROPSHEETPAGEW*>(lParam)->lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        self->window_ = window;
        self->Fill();
        self->Arrange();
        return TRUE;
    }
    auto* const self = reinterpret_cast<OptionItemsPage*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return FALSE;
    switch (message) {
    case WM_SIZE:
        self->Arrange();
        return FALSE;
    case WM_VSCROLL:
        if (lParam == 0) self->Scroll(LOWORD(wParam), HIWORD(wParam));
        return FALSE;
    case WM_MOUSEWHEEL:
        self->ScrollTo(self->scrolled_ -
                       static_cast<short>(HIWORD(wParam)) * PixelsDown(window, kRow) * 3 / 120);
        return TRUE;
    case WM_COMMAND:
        self->OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
        return FALSE;
    case WM_DRAWITEM:
        self->DrawPicture(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == PSN_APPLY) {
            SetWindowLongPtrW(window, DWLP_MSGRESULT,
                              self->Apply() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE);
            return TRUE;
        }
        return FALSE;
    case WM_DESTROY:
        self->window_ = nullptr;
        return FALSE;
    default:
        return FALSE;
    }
}

} // namespace tintwerk
