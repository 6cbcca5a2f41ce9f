// The library's print-list object under Wine: the arrays and pictures it
// takes over, the clipboard's text and HTML as another program reads them,
// pages drawn into metafiles and bitmaps, the modal preview driven by its
// buttons and keys, and printing through the print-dialog seam (to a real
// queue when the test script names one).
#include "quorvel/lists/print_list_object.h"

#include <objidl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

using qvtest::Pump;

struct Col {
    std::wstring name;
    int alignment = 0;
    int width = 100;
    std::vector<std::wstring> cells;
    std::vector<HBITMAP> pictures;  // the bitmap column's, one per row
};

template <class T>
T* TaskArray(size_t n) {
    return static_cast<T*>(::CoTaskMemAlloc(std::max<size_t>(n, 1) * sizeof(T)));
}

// Hands the columns over as a report list does: widths, headers (taken over
// on S_OK), then each column's cells (freed here after the call).
void HandOver(IZTPrintGenericListObject* object, const std::vector<Col>& cols) {
    const int n = static_cast<int>(cols.size());
    auto* names = TaskArray<BSTR>(cols.size());
    auto* indices = TaskArray<int>(cols.size());
    auto* alignments = TaskArray<int>(cols.size());
    for (int i = 0; i < n; ++i) {
        object->SetColumnWidth(i, cols[i].width);
        names[i] = ::SysAllocString(cols[i].name.c_str());
        indices[i] = i;
        alignments[i] = cols[i].alignment;
    }
    ASSERT_EQ(object->SetColumnHeaders(n, names, indices, alignments), S_OK);
    for (int i = 0; i < n; ++i) {
        const size_t rows = cols[i].cells.size();
        auto* texts = TaskArray<BSTR>(rows);
        auto* bitmaps = TaskArray<int>(rows);
        auto* cellAlign = TaskArray<int>(rows);
        for (size_t r = 0; r < rows; ++r) {
            texts[r] = ::SysAllocString(cols[i].cells[r].c_str());
            bitmaps[r] = r < cols[i].pictures.size()
                             ? static_cast<int>(reinterpret_cast<INT_PTR>(cols[i].pictures[r]))
                             : 0;
            cellAlign[r] = cols[i].alignment == 1 ? 1 : 0;  // as a list without image list: left
        }
        EXPECT_EQ(object->SetColumnItems(i, static_cast<int>(rows), texts, bitmaps, cellAlign), S_OK);
        for (size_t r = 0; r < rows; ++r) ::SysFreeString(texts[r]);
        ::CoTaskMemFree(texts);
        ::CoTaskMemFree(bitmaps);
        ::CoTaskMemFree(cellAlign);
    }
}

HBITMAP RedSquare() {
    qvtest::Pump();
    HDC screen = ::GetDC(nullptr);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 16, 16);
    HDC mem = ::CreateCompatibleDC(screen);
    HGDIOBJ old = ::SelectObject(mem, bitmap);
    HBRUSH red = ::CreateSolidBrush(RGB(255, 0, 0));
    RECT r{0, 0, 16, 16};
    ::FillRect(mem, &r, red);
    ::DeleteObject(red);
    ::SelectObject(mem, old);
    ::DeleteDC(mem);
    ::ReleaseDC(nullptr, screen);
    return bitmap;
}

const wchar_t kLongNote[] =
    L"A note far too long for its column, which the page cuts with an ellipsis rather than running it into the "
    L"next column or wrapping it onto a second line of the row";

// `rows` rows: a picture, a name, a right-aligned quantity and a note.
std::vector<Col> SampleList(int rows, bool pictures = true) {
    std::vector<Col> cols;
    if (pictures) cols.push_back({L"Bitmap", 1, 20, {}, {}});
    cols.push_back({L"Name", 0, 150, {}, {}});
    cols.push_back({L"Qty", 3, 60, {}, {}});
    cols.push_back({L"Note", 0, 200, {}, {}});
    for (int r = 0; r < rows; ++r) {
        if (pictures) {
            cols[0].cells.push_back(L"BitmapData");
            cols[0].pictures.push_back(RedSquare());
        }
        const size_t o = pictures ? 1 : 0;
        cols[o].cells.push_back(L"Item " + std::to_wstring(r + 1));
        cols[o + 1].cells.push_back(std::to_wstring((r + 1) * 10));
        cols[o + 2].cells.push_back(r == 0 ? kLongNote : L"ok");
    }
    return cols;
}

// What a page put into a metafile: its texts and how many pictures.
struct PageRecords {
    std::vector<std::wstring> texts;
    int pictures = 0;
    RECT bounds{};
    bool Has(const std::wstring& text) const { return std::find(texts.begin(), texts.end(), text) != texts.end(); }
    int CountPrefix(const std::wstring& prefix) const {
        return static_cast<int>(std::count_if(texts.begin(), texts.end(),
                                              [&](const std::wstring& t) { return t.rfind(prefix, 0) == 0; }));
    }
};

int CALLBACK CollectRecord(HDC, HANDLETABLE*, const ENHMETARECORD* rec, int, LPARAM lp) {
    auto* out = reinterpret_cast<PageRecords*>(lp);
    if (rec->iType == EMR_EXTTEXTOUTW) {
        const auto* t = reinterpret_cast<const EMREXTTEXTOUTW*>(rec);
        const auto* s = reinterpret_cast<const wchar_t*>(reinterpret_cast<const BYTE*>(rec) + t->emrtext.offString);
        out->texts.emplace_back(s, t->emrtext.nChars);
    } else if (rec->iType == EMR_STRETCHDIBITS) {  // (a filled box is an EMR_BITBLT)
        ++out->pictures;
    } else if (rec->iType == EMR_HEADER) {
        const RECTL& b = reinterpret_cast<const ENHMETAHEADER*>(rec)->rclBounds;
        out->bounds = RECT{b.left, b.top, b.right, b.bottom};
    }
    return 1;
}

// Draws page `page` into a metafile on the screen's resolution and reads it back.
PageRecords DrawToMetafile(XPrintListObject* object, const RECT& area, int page, bool* drawn = nullptr) {
    HDC ref = ::GetDC(nullptr);
    HDC dc = ::CreateEnhMetaFileW(ref, nullptr, nullptr, nullptr);
    const bool ok = object->DrawPage(dc, area, page, L"Orders");
    if (drawn) *drawn = ok;
    HENHMETAFILE emf = ::CloseEnhMetaFile(dc);
    PageRecords out;
    ::EnumEnhMetaFile(nullptr, emf, CollectRecord, &out, nullptr);
    ::DeleteEnhMetaFile(emf);
    ::ReleaseDC(nullptr, ref);
    return out;
}

class PrintListObjectTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_EQ(XPrintListObject::CreateObject(&object_), S_OK);
    }
    void TearDown() override {
        if (object_) {
            EXPECT_EQ(object_->Release(), 0u);
        }
        HostTest::TearDown();
    }
    XPrintListObject* object_ = nullptr;
};

// ---- The object and what it owns ------------------------------------------------

TEST_F(PrintListObjectTest, CreatedWithOneReferenceAndKnowsItsInterfaces) {
    EXPECT_EQ(XPrintListObject::CreateInstance(nullptr), E_POINTER);
    EXPECT_EQ(object_->AddRef(), 2u);
    EXPECT_EQ(object_->Release(), 1u);
    IUnknown* unknown = nullptr;
    ASSERT_EQ(object_->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)), S_OK);
    EXPECT_EQ(unknown->Release(), 1u);
    void* other = reinterpret_cast<void*>(1);
    EXPECT_EQ(object_->QueryInterface(IID_IDispatch, &other), E_NOINTERFACE);
    EXPECT_EQ(other, nullptr);
}

// Counts the task allocator's frees of the pointers it is asked about.
class FreeSpy : public IMallocSpy {
public:
    std::set<void*> freed;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = ::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, IID_IMallocSpy) ? this : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void* STDMETHODCALLTYPE PreFree(void* p, BOOL) override { return *freed.insert(p).first; }
    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T cb) override { return cb; }
    void* STDMETHODCALLTYPE PostAlloc(void* p) override { return p; }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* p, SIZE_T cb, void** out, BOOL) override {
        *out = p;
        return cb;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* p, BOOL) override { return p; }
    void* STDMETHODCALLTYPE PreGetSize(void* p, BOOL) override { return p; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T cb, BOOL) override { return cb; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* p, BOOL) override { return p; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int actual) override { return actual; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}
};

TEST_F(PrintListObjectTest, HeaderArraysAreFreedOnlyWhenTakenOver) {
    // Static: a spy with allocations outstanding (the BSTR cache keeps some)
    // stays registered after CoRevokeMallocSpy until they are freed.
    static FreeSpy spy;
    ASSERT_EQ(::CoRegisterMallocSpy(&spy), S_OK);
    const struct { int indices[2]; HRESULT answer; } cases[] = {
        {{0, 1}, S_OK},          // taken over: the object frees them
        {{1, 0}, S_OK},          // another order is fine too
        {{0, 0}, E_INVALIDARG},  // a position twice: refused, the caller's to free
        {{0, 2}, E_INVALIDARG},  // out of range
    };
    for (const auto& c : cases) {
        auto* names = TaskArray<BSTR>(2);
        auto* indices = TaskArray<int>(2);
        auto* alignments = TaskArray<int>(2);
        names[0] = ::SysAllocString(L"A");
        names[1] = ::SysAllocString(L"B");
        indices[0] = c.indices[0];
        indices[1] = c.indices[1];
        alignments[0] = alignments[1] = 0;
        spy.freed.clear();
        EXPECT_EQ(object_->SetColumnHeaders(2, names, indices, alignments), c.answer);
        const bool taken = c.answer == S_OK;
        EXPECT_EQ(spy.freed.count(names) == 1, taken) << c.indices[0] << c.indices[1];
        EXPECT_EQ(spy.freed.count(indices) == 1, taken);
        EXPECT_EQ(spy.freed.count(alignments) == 1, taken);
        if (!taken) {
            ::SysFreeString(names[0]);
            ::SysFreeString(names[1]);
            ::CoTaskMemFree(names);
            ::CoTaskMemFree(indices);
            ::CoTaskMemFree(alignments);
        } else {
            EXPECT_EQ(object_->GetColumnCount(), 2);
        }
        if (c.answer == S_OK && c.indices[0] == 1) {
            // Entry i names display column indices[i].
            ASSERT_EQ(object_->CopyToClipboard(), S_OK);
            EXPECT_EQ(qvtest::ClipboardText(host_), L"B\tA\r\n");
        }
    }
    ::CoRevokeMallocSpy();
    EXPECT_EQ(object_->SetColumnHeaders(-1, nullptr, nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(object_->SetColumnHeaders(1, nullptr, nullptr, nullptr), E_INVALIDARG);
}

TEST_F(PrintListObjectTest, PicturesAreDeletedWhenTheObjectIsDoneWithThem) {
    const auto alive = [](HBITMAP b) { return ::GetObjectType(b) == OBJ_BITMAP; };
    std::vector<Col> cols = SampleList(2);
    HandOver(object_, cols);
    ASSERT_TRUE(alive(cols[0].pictures[0]) && alive(cols[0].pictures[1]));

    // The column handed over again: the pictures of the first call go, the
    // ones handed over again stay.
    HBITMAP fresh = RedSquare();
    int bitmaps[2] = {static_cast<int>(reinterpret_cast<INT_PTR>(cols[0].pictures[1])),
                      static_cast<int>(reinterpret_cast<INT_PTR>(fresh))};
    BSTR texts[2] = {::SysAllocString(L"BitmapData"), ::SysAllocString(L"BitmapData")};
    EXPECT_EQ(object_->SetColumnItems(0, 2, texts, bitmaps, nullptr), S_OK);
    EXPECT_FALSE(alive(cols[0].pictures[0]));
    EXPECT_TRUE(alive(cols[0].pictures[1]));
    EXPECT_TRUE(alive(fresh));

    // A refused call deletes what it was handed all the same.
    HBITMAP refused = RedSquare();
    int one = static_cast<int>(reinterpret_cast<INT_PTR>(refused));
    EXPECT_EQ(object_->SetColumnItems(9, 1, texts, &one, nullptr), S_FALSE);
    EXPECT_EQ(object_->SetColumnItems(0, -1, texts, nullptr, nullptr), S_FALSE);
    EXPECT_EQ(object_->SetColumnItems(0, 1, nullptr, nullptr, nullptr), S_FALSE);
    EXPECT_FALSE(alive(refused));
    ::SysFreeString(texts[0]);
    ::SysFreeString(texts[1]);

    EXPECT_EQ(object_->ResetList(), S_OK);
    EXPECT_FALSE(alive(cols[0].pictures[1]));
    EXPECT_FALSE(alive(fresh));
    EXPECT_EQ(object_->GetColumnCount(), 0);

    // And the last release deletes those it still holds.
    std::vector<Col> again = SampleList(1);
    HandOver(object_, again);
    EXPECT_EQ(object_->Release(), 0u);
    object_ = nullptr;
    EXPECT_FALSE(alive(again[0].pictures[0]));
}

// ---- Clipboard ----------------------------------------------------------------------

std::string ClipboardHtml() {
    std::string out;
    const UINT format = ::RegisterClipboardFormatW(L"HTML Format");
    if (!::OpenClipboard(nullptr)) return out;
    if (HANDLE h = ::GetClipboardData(format)) {
        if (const char* p = static_cast<const char*>(::GlobalLock(h))) {
            out.assign(p, strnlen(p, ::GlobalSize(h)));
            ::GlobalUnlock(h);
        }
    }
    ::CloseClipboard();
    return out;
}

size_t HeaderNumber(const std::string& data, const char* key) {
    const size_t at = data.find(std::string(key) + ":");
    return at == std::string::npos ? 0 : std::strtoul(data.c_str() + at + std::strlen(key) + 1, nullptr, 10);
}

TEST_F(PrintListObjectTest, ClipboardHoldsTextAndHtmlWithTheColumnsIntact) {
    qvtest::SetClipboard(host_, L"before");
    EXPECT_EQ(object_->CopyToClipboard(), S_FALSE) << "nothing handed over";
    EXPECT_EQ(qvtest::ClipboardText(host_), L"before");

    std::vector<Col> cols = SampleList(0);
    cols[1].cells = {L"Tab\there", L"Two\r\nlines"};
    cols[2].cells = {L"1", L"2"};
    cols[3].cells = {L"a & b", L"<x> \"y\""};
    cols[0].cells = {L"BitmapData", L"BitmapData"};
    HandOver(object_, cols);
    ASSERT_EQ(object_->CopyToClipboard(), S_OK);
    EXPECT_EQ(qvtest::ClipboardText(host_),
              L"Name\tQty\tNote\r\nTab here\t1\ta & b\r\nTwo lines\t2\t<x> \"y\"\r\n");

    const std::string html = ClipboardHtml();
    ASSERT_FALSE(html.empty());
    const size_t start = HeaderNumber(html, "StartFragment"), end = HeaderNumber(html, "EndFragment");
    ASSERT_LT(start, end);
    ASSERT_LE(end, html.size());
    EXPECT_EQ(HeaderNumber(html, "EndHTML"), html.size());
    EXPECT_EQ(html.substr(HeaderNumber(html, "StartHTML"), 6), "<html>");
    const std::string fragment = html.substr(start, end - start);
    EXPECT_EQ(fragment.rfind("<table", 0), 0u) << fragment;
    EXPECT_NE(fragment.find("<th>Name</th><th style=\"text-align:right\">Qty</th>"), std::string::npos) << fragment;
    EXPECT_NE(fragment.find("<td>a &amp; b</td>"), std::string::npos);
    EXPECT_NE(fragment.find("&lt;x&gt; &quot;y&quot;"), std::string::npos);
    EXPECT_NE(fragment.find("<td style=\"text-align:right\">2</td>"), std::string::npos);
    EXPECT_EQ(fragment.find("Bitmap"), std::string::npos);
}

// ---- Pages ------------------------------------------------------------------------------

TEST_F(PrintListObjectTest, EveryPageRepeatsTheHeaderAndNumbersItself) {
    const int rows = 120;
    HandOver(object_, SampleList(rows));
    const RECT area{40, 40, 740, 1000};
    HDC screen = ::GetDC(nullptr);
    const int pages = object_->GetPageCount(screen, area);
    ::ReleaseDC(nullptr, screen);
    ASSERT_GE(pages, 2);

    int next = 1;
    for (int p = 0; p < pages; ++p) {
        SCOPED_TRACE(p);
        const PageRecords page = DrawToMetafile(object_, area, p);
        for (const wchar_t* header : {L"Name", L"Qty", L"Note"}) EXPECT_TRUE(page.Has(header)) << header;
        EXPECT_EQ(page.CountPrefix(L"B"), 0) << "the picture column has no title on paper";
        EXPECT_TRUE(page.Has(L"Page " + std::to_wstring(p + 1) + L" of " + std::to_wstring(pages)));
        EXPECT_TRUE(page.Has(L"Orders"));
        // The rows continue where the page before stopped.
        const int onPage = page.CountPrefix(L"Item ");
        EXPECT_TRUE(page.Has(L"Item " + std::to_wstring(next)));
        EXPECT_EQ(page.pictures, onPage) << "one picture per row";
        next += onPage;
        EXPECT_LE(page.bounds.right, area.right + 1);
        EXPECT_LE(page.bounds.bottom, area.bottom + 1);
    }
    EXPECT_EQ(next, rows + 1);
    bool drawn = true;
    DrawToMetafile(object_, area, pages, &drawn);
    EXPECT_FALSE(drawn) << "no page after the last";

    // The long note is cut with an ellipsis on page 1.
    const PageRecords first = DrawToMetafile(object_, area, 0);
    const auto cut = std::find_if(first.texts.begin(), first.texts.end(),
                                  [](const std::wstring& t) { return t.rfind(L"A note", 0) == 0; });
    ASSERT_NE(cut, first.texts.end());
    EXPECT_LT(cut->size(), std::wcslen(kLongNote));
    EXPECT_EQ(cut->substr(cut->size() - 3), L"...");
}

TEST_F(PrintListObjectTest, WideListsShrinkToThePageAndEmptyOnesPrintTheirHeader) {
    std::vector<Col> wide = SampleList(3, false);
    for (Col& c : wide) c.width = 900;  // 2 700 list pixels on a 500-pixel area
    HandOver(object_, wide);
    const RECT area{0, 0, 500, 700};
    const PageRecords page = DrawToMetafile(object_, area, 0);
    EXPECT_TRUE(page.Has(L"Item 3"));
    EXPECT_GT(page.bounds.right, 400) << "the columns fill the width";
    EXPECT_LE(page.bounds.right, area.right + 1);

    // No rows: one page, the header and the footer.
    object_->ResetList();
    HandOver(object_, {{L"Only", 0, 100, {}, {}}});
    HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(object_->GetPageCount(screen, area), 1);
    ::ReleaseDC(nullptr, screen);
    const PageRecords empty = DrawToMetafile(object_, area, 0);
    EXPECT_TRUE(empty.Has(L"Only"));
    EXPECT_TRUE(empty.Has(L"Page 1 of 1"));
}

TEST_F(PrintListObjectTest, PageDrawnIntoABitmapShowsHeaderTextAndPictures) {
    HandOver(object_, SampleList(3));
    BITMAPINFO bi{};
    bi.bmiHeader = {sizeof(BITMAPINFOHEADER), 600, -800, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HBITMAP dib = ::CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    ASSERT_TRUE(dib && bits);
    HDC dc = ::CreateCompatibleDC(nullptr);
    HGDIOBJ old = ::SelectObject(dc, dib);
    RECT all{0, 0, 600, 800};
    ::FillRect(dc, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    ASSERT_TRUE(object_->DrawPage(dc, RECT{20, 20, 580, 780}, 0, L"Orders"));
    ::GdiFlush();
    int red = 0, grey = 0, dark = 0;
    const auto* px = static_cast<const DWORD*>(bits);
    for (int i = 0; i < 600 * 800; ++i) {
        const int r = (px[i] >> 16) & 0xFF, g = (px[i] >> 8) & 0xFF, b = px[i] & 0xFF;
        if (r > 200 && g < 60 && b < 60) ++red;
        if (r == 224 && g == 224 && b == 224) ++grey;
        if (r < 80 && g < 80 && b < 80) ++dark;
    }
    EXPECT_GE(red, 3 * 100) << "three pictures of at least 10 x 10";
    EXPECT_GT(grey, 1000) << "the header band";
    EXPECT_GT(dark, 200) << "text and rules";
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::DeleteObject(dib);
}

// ---- Preview ------------------------------------------------------------------------------

// A script run from a timer inside the preview's own message loop, one step
// a tick, so that what a step posts goes through the preview's loop before
// the next step looks. After the last step (or after ten seconds) the
// script closes the preview itself, so a failing step never hangs the test.
struct PreviewRun {
    HRESULT hr = E_UNEXPECTED;
    size_t steps = 0;             // steps run
    bool closedByScript = false;  // still open after the last step
    HWND window = nullptr;
};

struct PreviewScript {
    static PreviewScript* current;
    XPrintListObject* object = nullptr;
    std::vector<std::function<void(HWND)>> steps;
    PreviewRun run;
    int ticks = 0;
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        PreviewScript* self = current;
        if (!self) return;
        HWND preview = self->object->GetPreviewWindow();
        if (!preview) return;
        self->run.window = preview;
        if (self->run.steps < self->steps.size() && ++self->ticks < 100) {
            self->steps[self->run.steps++](preview);
        } else {
            self->run.closedByScript = true;
            ::PostMessageW(preview, WM_CLOSE, 0, 0);
        }
    }
};
PreviewScript* PreviewScript::current = nullptr;

PreviewRun RunPreview(XPrintListObject* object, const wchar_t* name, std::vector<std::function<void(HWND)>> steps) {
    PreviewScript script;
    script.object = object;
    script.steps = std::move(steps);
    PreviewScript::current = &script;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 100, PreviewScript::Tick);
    BSTR form = ::SysAllocString(name);
    script.run.hr = object->PreviewList(0, form);
    ::SysFreeString(form);
    ::KillTimer(nullptr, timer);
    PreviewScript::current = nullptr;
    return script.run;
}

std::wstring ItemText(HWND dialog, int id) { return qvtest::TextOf(::GetDlgItem(dialog, id)); }

void Click(HWND dialog, int id) {
    HWND button = ::GetDlgItem(dialog, id);
    ASSERT_TRUE(::IsWindowEnabled(button)) << id;
    ::SendMessageW(button, BM_CLICK, 0, 0);
}

TEST_F(PrintListObjectTest, PreviewShowsPagesZoomsAndClosesCleanly) {
    HandOver(object_, SampleList(150));
    ::SetActiveWindow(host_);
    qv::Services::DefaultTranslation().LoadText(L"Print\tDrucken\nPage %1 of %2\tSeite %1 von %2\n");
    std::vector<HWND> children;
    int pages = 0;
    const auto pageText = [&](int page) {
        return L"Seite " + std::to_wstring(page) + L" von " + std::to_wstring(pages);
    };
    const PreviewRun run = RunPreview(object_, L"Orders", {
        [&](HWND preview) {
            for (HWND c = ::GetWindow(preview, GW_CHILD); c; c = ::GetWindow(c, GW_HWNDNEXT)) children.push_back(c);
            EXPECT_FALSE(::IsWindowEnabled(host_)) << "modal to its owner";
            EXPECT_EQ(::GetWindow(preview, GW_OWNER), host_);
            EXPECT_NE(qvtest::TextOf(preview).find(L"Orders"), std::wstring::npos);
            EXPECT_EQ(ItemText(preview, 100), L"Drucken");
            const std::wstring first = ItemText(preview, 110);
            ASSERT_EQ(first.rfind(L"Seite 1 von ", 0), 0u) << first;
            pages = std::stoi(first.substr(12));
            ASSERT_GE(pages, 3);
            EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(preview, 101))) << "no page before the first";
            Click(preview, 102);  // next page
            EXPECT_EQ(ItemText(preview, 110), pageText(2));
            // Keys reach the preview wherever its focus is.
            ::SetFocus(::GetDlgItem(preview, 100));
            ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_END, 1);
        },
        [&](HWND preview) {
            EXPECT_EQ(ItemText(preview, 110), pageText(pages));
            EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(preview, 102))) << "no page after the last";
            ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_PRIOR, 1);
        },
        [&](HWND preview) {
            EXPECT_EQ(ItemText(preview, 110), pageText(pages - 1));
            // Zoom: the whole page fits without scrolling; 300 % needs the scroll bars.
            HWND view = ::GetDlgItem(preview, 120);
            SCROLLINFO si{};
            si.cbSize = sizeof si;
            si.fMask = SIF_RANGE | SIF_PAGE;
            EXPECT_EQ(ItemText(preview, 111), L"Whole page");
            EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(preview, 104)));
            ::GetScrollInfo(view, SB_VERT, &si);
            EXPECT_GE(static_cast<int>(si.nPage), si.nMax - si.nMin + 1);
            for (int i = 0; i < 6; ++i) Click(preview, 103);
            EXPECT_EQ(ItemText(preview, 111), L"300 %");
            EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(preview, 103)));
            ::GetScrollInfo(view, SB_VERT, &si);
            EXPECT_LT(static_cast<int>(si.nPage), si.nMax - si.nMin + 1);
            Click(preview, 104);
            EXPECT_EQ(ItemText(preview, 111), L"200 %");
        },
        [&](HWND preview) {
            // "Print" asks the dialog with the preview as its owner; cancelled
            // or failed, the preview stays open.
            Click(preview, 100);
            ASSERT_EQ(rec_->printDialog.owners.size(), 1u);
            EXPECT_EQ(rec_->printDialog.owners[0], preview);
            EXPECT_TRUE(::IsWindow(preview));
            Click(preview, IDCANCEL);  // Close
        },
    });
    qv::Services::DefaultTranslation().Clear();
    EXPECT_EQ(run.steps, 4u);
    EXPECT_FALSE(run.closedByScript) << "Close closed it";
    EXPECT_EQ(run.hr, S_OK);
    EXPECT_FALSE(::IsWindow(run.window));
    for (HWND c : children) EXPECT_FALSE(::IsWindow(c));
    EXPECT_TRUE(::IsWindowEnabled(host_)) << "the owner is given back";
    EXPECT_EQ(object_->GetPreviewWindow(), nullptr);
    EXPECT_EQ(object_->AddRef(), 2u) << "the preview let go of the object";
    object_->Release();
}

TEST_F(PrintListObjectTest, PreviewEndsOnEscAndOnQuitWithoutHangingTheForm) {
    HandOver(object_, SampleList(5, false));
    ::SetActiveWindow(host_);
    PreviewRun run = RunPreview(object_, L"", {[](HWND) { ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1); }});
    EXPECT_EQ(run.hr, S_OK);
    EXPECT_EQ(run.steps, 1u);
    EXPECT_FALSE(run.closedByScript) << "Esc closed it";
    EXPECT_TRUE(::IsWindowEnabled(host_));

    // WM_QUIT ends the preview's loop and is handed on to the host's.
    run = RunPreview(object_, L"", {[](HWND) { ::PostQuitMessage(7); }});
    EXPECT_EQ(run.hr, S_OK);
    EXPECT_FALSE(run.closedByScript);
    EXPECT_FALSE(::IsWindow(run.window));
    MSG quit{};
    EXPECT_TRUE(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(quit.wParam, 7u);
    EXPECT_TRUE(::IsWindowEnabled(host_));

    // The owner destroyed under the preview takes the preview with it.
    HWND form = qvtest::CreateHostWindow(L"Form");
    ::SetActiveWindow(form);
    run = RunPreview(object_, L"", {[&](HWND) { ::DestroyWindow(form); }});
    EXPECT_EQ(run.hr, S_OK);
    EXPECT_FALSE(run.closedByScript);
    EXPECT_FALSE(::IsWindow(run.window));

    // Nothing handed over: nothing to show.
    object_->ResetList();
    BSTR name = ::SysAllocString(L"x");
    EXPECT_EQ(object_->PreviewList(0, name), S_FALSE);
    ::SysFreeString(name);
}

// ---- Printing -------------------------------------------------------------------------------

TEST_F(PrintListObjectTest, PrintGoesThroughTheDialogAndReportsWhatHappened) {
    BSTR form = ::SysAllocString(L"Orders");
    EXPECT_EQ(object_->PrintList(0, form), S_FALSE) << "nothing handed over: no dialog";
    EXPECT_TRUE(rec_->printDialog.owners.empty());

    HandOver(object_, SampleList(4));
    ::SetActiveWindow(host_);
    EXPECT_EQ(object_->PrintList(0, form), S_FALSE) << "cancelled";
    ASSERT_EQ(rec_->printDialog.owners.size(), 1u);
    EXPECT_EQ(rec_->printDialog.owners[0], host_);

    // A device that refuses the document: a failure, in the log book.
    rec_->printDialog.choose = [] { return ::CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr); };
    qv::Services::DefaultLogBook().Clear();
    EXPECT_EQ(object_->PrintList(0, form), E_FAIL);
    const auto& log = qv::Services::DefaultLogBook().Entries();
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].function, L" XPrintListObject::PrintList");
    ::SysFreeString(form);
}

// The printer the test script set up (QV_PRINT_QUEUE), printed to with the
// document name it gives (QV_PRINT_DOC); the script checks the PDF.
TEST_F(PrintListObjectTest, PrintsToARealQueue) {
    const char* queue = std::getenv("QV_PRINT_QUEUE");
    const char* doc = std::getenv("QV_PRINT_DOC");
    if (!queue || !*queue || !doc || !*doc) GTEST_SKIP() << "no print queue named (tests/win/print_to_pdf.sh names one)";
    const std::wstring printer(queue, queue + std::strlen(queue));
    const std::wstring name(doc, doc + std::strlen(doc));
    HDC probe = ::CreateDCW(L"WINSPOOL", printer.c_str(), nullptr, nullptr);
    if (!probe) GTEST_SKIP() << "Wine does not see the print queue " << queue;
    ::DeleteDC(probe);

    HandOver(object_, SampleList(150));
    rec_->printDialog.choose = [&] { return ::CreateDCW(L"WINSPOOL", printer.c_str(), nullptr, nullptr); };
    HDC dc = ::CreateDCW(L"WINSPOOL", printer.c_str(), nullptr, nullptr);
    const int expected = object_->GetPageCount(dc, XPrintListObject::GetPrintArea(dc));
    ::DeleteDC(dc);
    ASSERT_GE(expected, 2);
    BSTR form = ::SysAllocString(name.c_str());
    EXPECT_EQ(object_->PrintList(0, form), S_OK);
    ::SysFreeString(form);
    std::printf("QV_PRINTED_PAGES=%d\n", expected);
}

}  // namespace
