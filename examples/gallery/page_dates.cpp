// The dates-and-times page: the framed picker with its "no date" state and a
// range, the date and time fields, the compound date-and-time field at its
// size and cut down, and the read-only date field in its three display
// types, in the user's locale.
#include <string>

#include "gallery.h"
#include "quorvel/masks/date_edits.h"
#include "quorvel/masks/datetime_field.h"

namespace gallery {

namespace {

struct DateObjects : PageObjects {
    XBaseDateTime noDate{WS_TABSTOP};
    XBaseDateTime ranged{WS_TABSTOP};
    XMFCBaseDateEdit date;
    XMFCBaseTimeEdit time;
    XMFCBaseDateTimeEdit compound;
    XMFCBaseDateTimeEdit narrow;
    XMFCBaseDateEditReadOnly readOnly[3] = {XMFCBaseDateEditReadOnly(DISPLAYTYPE_DATE),
                                            XMFCBaseDateEditReadOnly(DISPLAYTYPE_TIME),
                                            XMFCBaseDateEditReadOnly(DISPLAYTYPE_DATETIME)};
    XMFCBaseDateEditReadOnlyColor coloured{DISPLAYTYPE_DATETIME};
};

RECT Box(int x, int y, int w, int h) { return RECT{x, y, x + w, y + h}; }

}  // namespace

std::unique_ptr<PageObjects> BuildDatesPage(HWND page) {
    auto objects = std::make_unique<DateObjects>();
    DateObjects& o = *objects;
    const HFONT font = GalleryFont();
    const qv::OleDateTime now = qv::OleDateTime::GetCurrentTime();
    const int labelX = 16, fieldX = 280;

    AddLabel(page, L"Framed picker, no date (box unchecked)", labelX, 20, 256, 18);
    o.noDate.Create(L"", WS_CHILD | WS_VISIBLE, Box(fieldX, 16, 200, 24), page, 4001);
    o.noDate.m_dtValue.SetStatus(qv::OleDateTime::null);
    o.noDate.Init(1, 0);
    ::SendMessageW(o.noDate.GetPicker(), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);

    AddLabel(page, L"Framed picker, 30 days back to a year ahead", labelX, 56, 256, 18);
    o.ranged.Create(L"", WS_CHILD | WS_VISIBLE, Box(fieldX, 52, 200, 24), page, 4002);
    o.ranged.m_dtValue = now;
    o.ranged.SetRange(30, 365, 1, 0);
    o.ranged.Init(1, 0);
    ::SendMessageW(o.ranged.GetPicker(), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);

    AddLabel(page, L"Date field", labelX, 96, 256, 18);
    o.date.Create(true, Box(fieldX, 92, 140, 24), page, 4010, font);
    o.date.SetValue(now);
    AddLabel(page, L"Time field", labelX, 132, 256, 18);
    o.time.Create(Box(fieldX, 128, 140, 24), page, 4011, font);
    o.time.SetValue(now);

    AddLabel(page, L"Date and time (ids 4020, 4021, 4022)", labelX, 172, 256, 18);
    unsigned id = 4020;
    o.compound.Create(true, Box(fieldX, 168, 205, 22), page, id, font);
    o.compound.SetValue(now);
    AddLabel(page, L"The same created at 150 x 15", labelX, 206, 256, 18);
    id = 4030;
    o.narrow.Create(true, Box(fieldX, 206, 150, 15), page, id, font);
    o.narrow.SetValue(now);

    const wchar_t* types[] = {L"Read-only: date", L"Read-only: time", L"Read-only: date and time"};
    for (int i = 0; i < 3; ++i) {
        AddLabel(page, types[i], labelX, 256 + i * 34, 256, 18);
        unsigned rid = 4040 + 2 * i;
        o.readOnly[i].Create(Box(fieldX, 252 + i * 34, 200, 24), page, rid, font);
        o.readOnly[i].SetValue(now);
    }
    AddLabel(page, L"Read-only, coloured", labelX, 358, 256, 18);
    unsigned cid = 4050;
    o.coloured.Create(Box(fieldX, 354, 200, 24), page, cid, font);
    o.coloured.SetValue(now);
    o.coloured.SetBkColor(RGB(225, 235, 250));
    o.coloured.SetTextColor(RGB(0, 0, 140));
    return objects;
}

}  // namespace gallery
