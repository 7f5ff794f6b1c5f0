#include "controls/ListView.h"
#include "windows/face/ControlWindow.h"

#include <commctrl.h>

#include <algorithm>

namespace tarvik::face {

namespace {

/// The control asks for the texts that it shows; it keeps no row.
class ListViewWindow : public ControlWindow {
public:
    ListViewWindow(ListView& list, ControlSite& site)
        : ControlWindow(
              list, site,
              makeChild(list, site, WC_LISTVIEWA, "",
                        WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                        WS_EX_CLIENTEDGE)),
          list_(list) {
        const DWORD styles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
        SendMessageA(window(), LVM_SETEXTENDEDLISTVIEWSTYLE, styles, styles);
        SetWindowSubclass(window(), onMessage, 0, reinterpret_cast<DWORD_PTR>(this));
        for (std::size_t i = 0; i < list.columns().size(); ++i) {
            insertColumn(static_cast<int>(i), list.columns()[i]);
        }
        for (const Property own : {Property::Items, Property::Headers, Property::ColumnWidths}) {
            refresh(own);
        }
    }

    ~ListViewWindow() override { RemoveWindowSubclass(window(), onMessage, 0); }
    ListViewWindow(const ListViewWindow&) = delete;
    ListViewWindow& operator=(const ListViewWindow&) = delete;

    LayoutSize measure(const FaceFont& font, int characters, int lines) const override {
        constexpr int scrollBar = 16;
        constexpr int rowGap = 2;
        constexpr int usualCharacters = 40;
        constexpr int usualLines = 8;
        const int rows = (lines > 0 ? lines : usualLines) + 1; // and the headers
        return {font.charactersWidth(characters > 0 ? characters : usualCharacters) +
                    font.horizontalUnits(scrollBar),
                rows * (font.lineHeight() + rowGap)};
    }

    LRESULT onNews(UINT code, LPARAM record) override {
        switch (code) {
        case static_cast<UINT>(LVN_GETDISPINFOA):
            answer(reinterpret_cast<NMLVDISPINFOA*>(record)->item);
            break;
        case static_cast<UINT>(LVN_ITEMCHANGED):
        case static_cast<UINT>(LVN_ODSTATECHANGED):
            fromUser(Property::ListIndex, [this] { list_.setSelectedRow(selectedRow()); });
            break;
        case static_cast<UINT>(NM_DBLCLK):
        case static_cast<UINT>(NM_RETURN):
            if (selectedRow() != ListView::none) {
                fromUser(Property::ListIndex, [this] { list_.DblClick.raise(); });
            }
            break;
        case static_cast<UINT>(LVN_ODFINDITEMA):
        case static_cast<UINT>(LVN_ODFINDITEMW):
            // A letter looks for nothing: there may be a million rows to read.
            return -1;
        default:
            break;
        }
        return 0;
    }

protected:
    void refreshOwn(Property changed) override {
        switch (changed) {
        case Property::Items:
            SendMessageA(window(), LVM_SETITEMCOUNT, static_cast<WPARAM>(list_.rowCount()), 0);
            showSelection();
            InvalidateRect(window(), nullptr, TRUE);
            break;
        case Property::ListIndex:
            showSelection();
            break;
        case Property::Headers:
            showHeaders();
            break;
        case Property::ColumnWidths:
            fitColumns();
            break;
        default:
            break;
        }
    }

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                      UINT_PTR, DWORD_PTR own) {
        const auto& list = *reinterpret_cast<const ListViewWindow*>(own);
        const LRESULT result = DefSubclassProc(window, message, first, second);
        if (message == WM_GETDLGCODE && list.wants(reinterpret_cast<const MSG*>(second))) {
            return result | DLGC_WANTMESSAGE;
        }
        return result;
    }

    /// Enter on a row is the list's own; elsewhere it is the form's.
    bool wants(const MSG* key) const {
        return key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_RETURN &&
               selectedRow() != ListView::none;
    }

    void insertColumn(int place, const ListColumn& column) {
        std::string header = shown(column.header);
        LVCOLUMNA record{};
        record.mask = LVCF_TEXT | LVCF_FMT;
        record.fmt = column.alignment == TextAlignment::Right ? LVCFMT_RIGHT : LVCFMT_LEFT;
        record.pszText = header.data();
        SendMessageA(window(), LVM_INSERTCOLUMNA, static_cast<WPARAM>(place),
                     reinterpret_cast<LPARAM>(&record));
    }

    void answer(LVITEMA& item) const {
        if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0) {
            const std::string text = shown(list_.cell(item.iItem, item.iSubItem));
            const std::size_t room = static_cast<std::size_t>(item.cchTextMax) - 1;
            item.pszText[text.copy(item.pszText, room)] = '\0';
        }
    }

    int selectedRow() const {
        return static_cast<int>(
            SendMessageA(window(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }

    void showSelection() {
        const int wanted = list_.selectedRow();
        if (selectedRow() == wanted) {
            return;
        }
        LVITEMA item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageA(window(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(&item));
        if (wanted != ListView::none) {
            item.state = LVIS_SELECTED | LVIS_FOCUSED;
            SendMessageA(window(), LVM_SETITEMSTATE, static_cast<WPARAM>(wanted),
                         reinterpret_cast<LPARAM>(&item));
            SendMessageA(window(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(wanted), FALSE);
        }
    }

    HWND header() const {
        return reinterpret_cast<HWND>(SendMessageA(window(), LVM_GETHEADER, 0, 0));
    }

    void showHeaders() {
        const auto style = static_cast<DWORD>(GetWindowLongA(header(), GWL_STYLE));
        const DWORD buttons = HDS_BUTTONS;
        SetWindowLongA(
            header(), GWL_STYLE,
            static_cast<LONG>(list_.headersClickable() ? style | buttons : style & ~buttons));
    }

    void fitColumns() {
        constexpr int aroundText = 16;
        const bool toContents = list_.columnFit() == ColumnFit::Contents;
        const auto& longest = list_.longestTexts();
        for (std::size_t i = 0; i < list_.columns().size(); ++i) {
            const std::string& text = toContents && i < longest.size() ? longest[i] : std::string();
            const int width = std::max(widthOf(text), widthOf(list_.columns()[i].header));
            SendMessageA(window(), LVM_SETCOLUMNWIDTH, i, width + aroundText);
        }
    }

    int widthOf(const std::string& text) const {
        return static_cast<int>(SendMessageA(window(), LVM_GETSTRINGWIDTHA, 0,
                                             reinterpret_cast<LPARAM>(shown(text).c_str())));
    }

    ListView& list_;
};

} // namespace

std::unique_ptr<ControlWindow> makeListView(Control& control, ControlSite& site) {
    return std::make_unique<ListViewWindow>(static_cast<ListView&>(control), site);
}

} // namespace tarvik::face
