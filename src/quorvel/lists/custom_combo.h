// XCustomCombo: an editable drop-down combo box that filters its list while
// the user types. It keeps every entry added to it (a text and a 32-bit
// value, in the order added) and shows those whose text begins with the
// typed text, or, when the typed text holds "*", "?" or "+", those that
// match it as a small pattern: "*" any run of characters, "?" one
// character, "\*", "\?" and "\\" the character itself. Case is ignored
// (A-Z and the Latin-1 capitals). Clearing the field brings every entry
// back with its value.
//
// The dropped list is 15 rows high (5 for fonts over 24 pixels at 96 DPI,
// scaled to the combo box's DPI) and stays so: blank filler entries are
// added when fewer entries are shown. Its rows are the font's height with
// 3 pixels between them (11 for tall fonts), at 96 DPI, scaled; when the
// combo box's DPI changes, a list it sized before is sized again. Text
// RGB(8, 0, 0) on the system window colour until the host sets its own.
//
// Screen readers hear the combo box named by its label, its text as value
// and its tooltip's text, tags removed, as description; the field inside it
// is named and described the same way, so a reader in the field hears what
// the field is for.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"

class QV_API XCustomCombo : public qv::ComboBox,
                            public qv::FieldTooltip,
                            public XBaseColor,
                            public virtual qv::AccessibleSource,
                            public qv::DpiListener {
public:
    // Child, visible, border, vertical scroll bar, group, tab stop,
    // CBS_DROPDOWN | CBS_AUTOHSCROLL; WS_EX_CLIENTEDGE.
    enum : DWORD { kStyle = 0x50A30042 };
    // The kinds of pattern token (TokenizeString's `types`).
    enum : int { kTokenAnyRun = 0, kTokenOneChar = 1, kTokenLiteral = 2 };

    XCustomCombo();
    ~XCustomCombo() override;

    // Creates the combo box (rect includes the dropped list) with `text` in
    // its field, and its tooltip. FALSE when either could not be made, also
    // for a null or destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // The tooltip shows the mark-up text given last (at first the field's
    // text when the combo was created). 1 when the call made the tooltip.
    int CreateTooltip() override;
    int CreateTooltip(const std::wstring& markup);

    // Stores an entry; while the list shows every entry it shows this one
    // too. The entry's index in the shown list, or -1 when it is stored
    // only.
    int AddEntry(const std::wstring& text, DWORD value);
    // Empties the shown list; the stored entries stay.
    void DeleteAll();
    // Shows the stored entries that a lower-case pattern keeps (see above),
    // in stored order with their values.
    void FilterList(const std::wstring& pattern);
    int GetEntryCount() const noexcept { return static_cast<int>(m_texts.size()); }

    // The pattern as tokens: `tokens` the texts ("*", "?" or a literal) and
    // `types` their kinds, replacing what both held. True when the pattern
    // held an unescaped "*" or "?".
    static bool TokenizeString(const std::wstring& pattern, std::vector<std::wstring>& tokens,
                               std::vector<int>& types);
    // Whether `text` matches the tokens: it starts with the first literal
    // unless a "*" comes first, the literals follow in order ("?" skips one
    // character), and it ends with the last literal when "*" comes before
    // it. The text may go on after the last token otherwise.
    static bool CompareTokenToString(const std::vector<std::wstring>& tokens, const std::vector<int>& types,
                                     const std::wstring& text);

    // XBaseColor
    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;
    const qv::ColorScheme& Scheme() const noexcept { return m_scheme; }

    // qv::AccessibleSource: the tooltip's text, tags removed.
    bool AccessibleDescription(long child, std::wstring& description) override;

    // qv::DpiListener: a list sized before is sized again at the new DPI.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    bool OnReflectCommand(UINT notifyCode) override;              // reflected CBN_EDITUPDATE, CBN_DROPDOWN
    HBRUSH OnReflectCtlColor(HDC dc, UINT ctlColorMsg) override;  // WM_CTLCOLOR* of the combo and its parts
    void OnSize(UINT type, int cx, int cy) override;              // WM_SIZE
    void OnDestroy() override;                                    // WM_DESTROY

    // While typing: filters by the field's text and puts it back with the
    // caret after it; an empty field brings every entry back.
    virtual void OnCbnEditupdate();
    // Before the list drops: its height and width, and the filler entries.
    virtual void OnCbnDropdown();

private:
    class EditPart;
    // Replaces the shown list with the stored entries at `indexes`.
    void ShowEntries(const std::vector<size_t>& indexes);
    // The combo box's list window (null when there is none).
    HWND DroppedList() const;
    // Sizes the dropped list for the font and the DPI: row height, list
    // height, width. Answers the rows the list shows (15 when there is no
    // font or DC to measure with).
    int SizeDroppedList();

    std::vector<std::wstring> m_texts;    // stored entries, as added
    std::vector<std::wstring> m_lowered;  // the same, lower-cased for filtering
    std::vector<DWORD> m_values;
    std::vector<size_t> m_shown;          // stored indexes in the shown list (no fillers)
    std::vector<int> m_widths;            // text widths in m_widthsFont, -1 not yet measured
    HFONT m_widthsFont = nullptr;
    bool m_showsAll = true;
    bool m_updating = false;
    bool m_droppedSized = false;  // SizeDroppedList has sized the list
    std::wstring m_tooltipText;
    qv::ColorScheme m_scheme;
    // The field's edit, whose mouse messages the tooltip must see: the edit
    // covers the combo box, so the combo box itself is never hovered.
    std::unique_ptr<EditPart> m_editPart;
};
