// The splitter page: two splitters with a list of process steps on the left
// and notes on the right, created the way a host makes them. The first shows
// both panes; in the second the right pane is collapsed, and the lower
// button on its bar restores it. Drag a bar near an edge to collapse a pane.
#include <memory>

#include "gallery.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/base_lists.h"
#include "quorvel/windows/splitter.h"

namespace gallery {

namespace {

struct SplitPane {
    XSplitterWnd splitter;
    XBaseListBox steps;
    XBaseMultiLineEdit notes;

    void Make(HWND page, const RECT& rect, UINT id) {
        splitter.SetColumnInfo(0, 170, 0);
        if (!splitter.Create(page, rect, id)) return;
        const RECT any{0, 0, 50, 50};  // the splitter lays its panes out
        steps.Create(L"", id + 1, any, GalleryFont(), splitter);
        for (const wchar_t* item : {L"Cut", L"Weld", L"Grind", L"Paint", L"Assemble", L"Inspect", L"Pack", L"Ship"})
            steps.AddString(item);
        steps.SelectString(-1, L"Weld");  // the list sorts itself
        notes.Create(L"Weld\r\n\r\nTwo welders on the early shift; the seams are checked by the "
                     L"afternoon inspection before painting.\r\n\r\nDrag the bar close to an edge, or "
                     L"press a button on it, to collapse a pane.",
                     id + 2, any, GalleryFont(), splitter);
        splitter.SetPane(0, steps);
        splitter.SetPane(1, notes);
    }
};

struct SplitterObjects : PageObjects {
    SplitPane open, collapsed;
};

}  // namespace

std::unique_ptr<PageObjects> BuildSplitterPage(HWND page) {
    auto objects = std::make_unique<SplitterObjects>();
    AddLabel(page, L"Both panes shown: the upper button on the bar collapses the left pane, the lower one the right "
                   L"pane.",
             16, 12, 460, 36);
    AddLabel(page, L"The right pane collapsed: the lower button, now the only one, restores both panes.", 512, 12,
             460, 36);
    objects->open.Make(page, RECT{16, 52, 486, 452}, 100);
    objects->collapsed.Make(page, RECT{512, 52, 982, 452}, 200);
    objects->collapsed.splitter.BtnRightPressed();
    return objects;
}

}  // namespace gallery
