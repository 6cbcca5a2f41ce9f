// XColorBtn: a colour-picker button, and XColorBtnDlg, the grid of colours
// it opens.
//
// The button is owner-drawn: a raised 3D frame (sunken while held down), the
// selected colour as a swatch, an engraved separator and a small drop-down
// arrow at the right. Disabled, it shows no swatch and an engraved grey
// arrow; with the focus, a dotted frame inside the border.
//
// A click opens the colour grid (the library's dialog 5000) just below the
// button: 20 cells of the shared palette in four columns and five rows, and
// "Other..." below them. A click on a cell, or Enter or Space on the focused
// cell, takes that colour and closes the grid; the arrow keys move between
// the cells (Home and End to the first and last), Esc or a click outside the
// grid closes it without a change. "Other..." opens the system's colour
// dialog on the current colour and takes what the user chooses there. The
// parent receives the button's BN_CLICKED after the grid has closed, so it
// reads the new colour with GetSelColor.
//
// The palette is one table for all colour buttons of the process. The first
// button creates it with the 20 static colours of the default system
// palette, the last one to be destroyed frees it; the constructor with a
// list of colours overwrites it from the start, for every button.
//
// Screen readers: the button is named by its caption (the text given to
// Create or the dialog item's own text, which is not drawn), otherwise by
// the label before it in the form, otherwise "Colour". Its value is the
// colour's name where the default palette has one ("Red", translated) and
// its "#RRGGBB" text otherwise; a named colour carries the "#RRGGBB" text as
// its description. It is read as a button that drops down a grid, and a
// change of the colour is announced (EVENT_OBJECT_VALUECHANGE). In the grid
// every cell is a list item named by its colour, the cell of the current
// colour selected; "Other..." is a push button.
//
// DPI: the frame, separator, arrow, swatch and focus frame of the button
// and the cells of the grid are laid out at the DPI of their window (lines
// one pixel thick at 96 DPI, two at 144 and 192); both follow a DPI change.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dialog.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"

// The colour grid. Run modally by XColorBtn; a host may run it itself and
// read GetSelectedIndex and GetSelectedColor afterwards.
class QV_API XColorBtnDlg : public qv::Dialog, public qv::DpiListener {
public:
    enum : UINT {
        kTemplate = 5000,
        kFirstCell = 5001,  // cells 5001 to 5020 in reading order
        kOtherButton = 5021,
    };
    enum : int {
        kCellCount = 20,
        kOtherIndex = 20,   // GetSelectedIndex after a colour from "Other..."
        kNoSelection = -1,
    };

    XColorBtnDlg() noexcept;
    ~XColorBtnDlg() override;

    // The colour the grid opens on (its cell gets the focus and a mark), and
    // the window it drops down from (null: centred on its owner).
    void SetCurrentColor(COLORREF color) noexcept { m_current = color; }
    void SetAnchor(HWND anchor) noexcept { m_anchor = anchor; }
    // After IDOK: the chosen cell (0 to 19), or kOtherIndex for a colour from
    // the system's colour dialog; kNoSelection before or after a cancel.
    int GetSelectedIndex() const noexcept { return m_selected; }
    // After IDOK: the chosen colour.
    COLORREF GetSelectedColor() const noexcept { return m_chosen; }

    // qv::DpiListener: the cells and "Other..." are laid out again.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                     // WM_COMMAND
    // IDOK (Enter where no cell takes it): the focused cell, or a cancel.
    void OnOK() override;
    // Draws cell `dis->CtlID`: its colour, a mark on the current colour, and
    // a double frame while it has the focus.
    virtual void DrawCell(const DRAWITEMSTRUCT* dis);                  // WM_DRAWITEM
    // Runs the system's colour dialog; true when the user chose a colour.
    virtual bool ChooseOtherColor(COLORREF& color);

private:
    // A cell or "Other...": the keys of the grid and what a reader hears.
    class Item;
    // A key on the item with grid index `index`; true when handled.
    bool OnGridKey(int index, UINT vk);
    // Places the cells and "Other..." and sizes the grid for `dpi`.
    void LayOut(UINT dpi);
    void Choose(int index);
    void FocusIndex(int index);
    int IndexOf(HWND wnd) const;
    HWND ItemOf(int index) const;
    void PlaceBelowAnchor();
    void OpenOther();

    COLORREF m_current = 0xFFFFFF;
    COLORREF m_chosen = 0xFFFFFF;
    HWND m_anchor = nullptr;
    int m_selected = kNoSelection;
    int m_column = 0;          // the column Up from "Other..." returns to
    bool m_inOther = false;    // the system's colour dialog is open
    std::vector<std::unique_ptr<Item>> m_items;  // while the grid is open
};

class QV_API XColorBtn : public qv::Button, public qv::AccessibleSource, public qv::DpiListener {
public:
    enum : DWORD { kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW };
    enum : int { kPaletteSize = 20 };

    // The selected colour starts white, or as given. The list form also
    // overwrites the shared palette from its start with up to 20 colours.
    XColorBtn() noexcept;
    explicit XColorBtn(COLORREF selected) noexcept;
    XColorBtn(COLORREF selected, const COLORREF* colors, int count) noexcept;
    ~XColorBtn() override;

    // Creates the button with kStyle. `caption` (translated; null: the label
    // before the button, or "Colour") names it for screen readers. A dialog
    // item taken over with SubclassDlgItem must have BS_OWNERDRAW in its
    // template.
    BOOL Create(const wchar_t* caption, const RECT& rect, HWND parent, UINT id);

    void SetSelColor(COLORREF color);
    COLORREF GetSelColor() const noexcept { return m_selColor; }
    // Back to white.
    void Reset();
    // The colour grid (null only when it could not be made).
    XColorBtnDlg* GetDialog() const noexcept { return m_pdlg.get(); }

    // The shared palette: colour `index` (0 to 19), and how many colour
    // buttons use it (0: none exists).
    static COLORREF GetPaletteColor(int index) noexcept;
    static int GetPaletteUsers() noexcept;

    // qv::AccessibleSource: name, colour, role and state for screen readers.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleDescription(long child, std::wstring& description) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    // qv::DpiListener: the face is drawn again at the new DPI.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    bool OnReflectCommand(UINT notifyCode) override;                   // WM_COMMAND (BN_CLICKED)
    bool OnReflectDrawItem(DRAWITEMSTRUCT* dis) override;              // WM_DRAWITEM
    // Opens the grid and takes its colour; FALSE, so the parent hears the click too.
    virtual BOOL OnClicked();
    virtual void DrawItem(DRAWITEMSTRUCT* dis);
    void InitColorDialog() noexcept;
    void InitPenBrush() noexcept;

private:
    void Construct(COLORREF selected) noexcept;

    COLORREF m_selColor = 0xFFFFFF;
    std::unique_ptr<XColorBtnDlg> m_pdlg;
    bool m_paletteHeld = false;
    // The face and the three shades of the 3D frame, in the user's colours.
    qv::Brush m_brushFace, m_brushHighlight, m_brushShadow, m_brushDarkShadow;
};
