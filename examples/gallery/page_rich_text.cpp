// The rich text page: a formatted note in an editable field (right-click it
// for the edit and formatting menu), the same kind of note in a read-only
// field, and a field in the colours of a mandatory entry.
#include <memory>

#include "gallery.h"
#include "quorvel/controls/rich_text.h"

namespace gallery {

namespace {

const wchar_t kNote[] =
    L"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}"
    L"{\\colortbl;\\red192\\green0\\blue0;\\red0\\green96\\blue0;}"
    L"\\plain\\f0\\fs28 {\\b Weld station 3}\\par"
    L"\\plain\\f0\\fs18 Two welders on the early shift; seams are {\\i checked} by the afternoon "
    L"{\\ul inspection} before painting.\\par"
    L"{\\pntext\\'b7\\tab}\\pard\\fi-360\\li360{\\*\\pn\\pnlvlblt\\pnf0\\pnindent360{\\pntxtb\\'b7}}"
    L"\\plain\\f0\\fs18 Gas: {\\cf2 argon mix}\\par"
    L"\\plain\\f0\\fs18 Wire: {\\f1 1.0 mm SG2}\\par"
    L"\\pard\\plain\\f0\\fs18 {\\cf1\\b Note:} right-click for the edit and formatting menu.\\par"
    L"\\pard\\qc\\plain\\f0\\fs16 centred footer line\\par}";

const wchar_t kReadOnly[] =
    L"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}"
    L"\\plain\\f0\\fs20 {\\b Released} by quality assurance on 12 March.\\par"
    L"\\plain\\f0\\fs18 This text can be selected and copied, not changed: the menu offers "
    L"{\\i Copy} and {\\i Select All} only.\\par}";

// No colour of its own: the text takes the field's text colour.
const wchar_t kMandatory[] =
    L"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}"
    L"\\f0\\fs18\\b0 A mandatory remark, in the field colours the host chose.\\par}";

struct RichTextObjects : PageObjects {
    XBaseRTFEdit note;
    XBaseReadOnlyRTFEdit released;
    XBaseRTFEdit mandatory;
};

}  // namespace

std::unique_ptr<PageObjects> BuildRichTextPage(HWND page) {
    auto objects = std::make_unique<RichTextObjects>();
    AddLabel(page, L"Editable (XBaseRTFEdit): select text and right-click for Bold, alignment, bullets, colours and "
                   L"fonts.",
             16, 12, 460, 36);
    if (objects->note.Create(RECT{16, 52, 486, 300}, page, 100)) objects->note.SetRTF(kNote);

    AddLabel(page, L"Read-only (XBaseReadOnlyRTFEdit):", 512, 12, 460, 20);
    if (objects->released.Create(RECT{512, 52, 982, 170}, page, 101)) {
        objects->released.SetBkColor(::GetSysColor(COLOR_BTNFACE));
        objects->released.SetRTF(kReadOnly);
    }

    AddLabel(page, L"Coloured: dark blue on light yellow (SetTextColor, SetBkColor).", 512, 186, 460, 20);
    if (objects->mandatory.Create(RECT{512, 212, 982, 300}, page, 102)) {
        objects->mandatory.SetTextColor(RGB(0, 0, 128));
        objects->mandatory.SetBkColor(RGB(255, 255, 204));
        objects->mandatory.SetRTF(kMandatory);
    }
    return objects;
}

}  // namespace gallery
