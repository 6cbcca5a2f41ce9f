// What a screen reader hears from the colour button and its grid, the search
// fields, the viewers, the font and colour chooser and the rich text fields:
// names from labels and from what a button does, values, roles and states,
// the texts the library adds passed through translation, and the events a
// change raises.
#include <oleacc.h>

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "quorvel/controls/font_color.h"
#include "quorvel/controls/rich_text.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/frame/services.h"
#include "quorvel/views/color_button.h"
#include "quorvel/views/viewers.h"
#include "quorvel/windows/search_field.h"
#include "support/accessibility.h"
#include "support/host.h"

namespace {

using qvtest::AccessibleOf;

// A translation into a made-up language for the few texts a test looks for;
// every other text stays as it is.
class Glossary : public qv::ITranslationService {
public:
    Glossary(std::initializer_list<std::pair<const std::wstring, std::wstring>> words) : words_(words) {
        qv::Services::SetTranslation(this);
    }
    ~Glossary() override { qv::Services::SetTranslation(nullptr); }
    std::wstring Translate(std::wstring_view text) override {
        const auto found = words_.find(std::wstring(text));
        return found == words_.end() ? std::wstring(text) : found->second;
    }

private:
    std::map<std::wstring, std::wstring> words_;
};

// A 4 x 2 bitmap file of one colour, 24 bits per pixel.
bool WriteBitmap(const std::wstring& path) {
    const int width = 4, height = 2, stride = 12;
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + stride * height;
    std::vector<unsigned char> pixels(stride * height, 0x80);
    FILE* out = _wfopen(path.c_str(), L"wb");
    if (!out) return false;
    bool ok = std::fwrite(&file, sizeof file, 1, out) == 1 && std::fwrite(&info, sizeof info, 1, out) == 1 &&
              std::fwrite(pixels.data(), pixels.size(), 1, out) == 1;
    ok = std::fclose(out) == 0 && ok;
    return ok;
}

bool WriteText(const std::wstring& path, const char* text) {
    FILE* out = _wfopen(path.c_str(), L"wb");
    if (!out) return false;
    std::fputs(text, out);
    return std::fclose(out) == 0;
}

std::wstring TempPath(const wchar_t* name) {
    wchar_t folder[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, folder);
    return std::wstring(folder) + name;
}

size_t Count(qvtest::WinEventRecorder& events, HWND hwnd, DWORD event) { return events.Events(hwnd, event).size(); }

// ---- Colour button ------------------------------------------------------------------

using ColorButtonAccessibilityTest = qvtest::HostTest;

TEST_F(ColorButtonAccessibilityTest, NamedByCaptionLabelOrColourAndValuedByTheColour) {
    const struct {
        const wchar_t* caption;  // given to Create
        const wchar_t* label;    // a label before the button
        COLORREF color;
        const wchar_t *name, *value, *description;
    } cases[] = {
        {L"&Fill", nullptr, RGB(255, 0, 0), L"Fill", L"Red", L"#FF0000"},
        {nullptr, L"Text colour *", RGB(30, 144, 255), L"Text colour", L"#1E90FF", L""},
        {nullptr, nullptr, RGB(255, 255, 255), L"Colour", L"White", L"#FFFFFF"},
        {L"Border", L"Frame", RGB(0xF0, 0xFB, 0xFF), L"Border", L"#F0FBFF", L""},
        {L"Border", L"Frame", RGB(0xFF, 0xFB, 0xF0), L"Border", L"Cream", L"#FFFBF0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.caption ? c.caption : L"(no caption)"));
        XBaseStaticText label;
        if (c.label) {
            ASSERT_TRUE(label.Create(c.label, 100, Row(0), font_, host_));
        }
        XColorBtn button(c.color);
        ASSERT_TRUE(button.Create(c.caption, Row(1), host_, 101));
        const auto acc = AccessibleOf(button);
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.Name(), c.name);
        EXPECT_EQ(acc.Value(), c.value);
        EXPECT_EQ(acc.Description(), c.description);
        EXPECT_EQ(acc.Role(), ROLE_SYSTEM_BUTTONDROPDOWNGRID);
        EXPECT_EQ(acc.State() & (STATE_SYSTEM_HASPOPUP | STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_UNAVAILABLE),
                  STATE_SYSTEM_HASPOPUP | STATE_SYSTEM_FOCUSABLE);
        button.EnableWindow(false);
        EXPECT_TRUE(AccessibleOf(button).State() & STATE_SYSTEM_UNAVAILABLE);
    }
}

TEST_F(ColorButtonAccessibilityTest, AChangedColourIsAnnouncedOnceAndReadTranslated) {
    Glossary german({{L"Red", L"Rot"}, {L"Colour", L"Farbe"}});
    XColorBtn button;
    ASSERT_TRUE(button.Create(nullptr, Row(0), host_, 100));
    EXPECT_EQ(AccessibleOf(button).Name(), L"Farbe");
    qvtest::WinEventRecorder events;
    const struct { COLORREF color; size_t announced; const wchar_t* value; } steps[] = {
        {RGB(255, 0, 0), 1, L"Rot"},
        {RGB(255, 0, 0), 0, L"Rot"},  // the same colour again: nothing to say
        {RGB(1, 2, 3), 1, L"#010203"},
    };
    for (const auto& s : steps) {
        events.Clear();
        button.SetSelColor(s.color);
        EXPECT_EQ(Count(events, button, EVENT_OBJECT_VALUECHANGE), s.announced) << s.value;
        EXPECT_EQ(AccessibleOf(button).Value(), s.value);
    }
}

TEST_F(ColorButtonAccessibilityTest, GridCellsAreListItemsTheCurrentOneSelected) {
    Glossary german({{L"Red", L"Rot"}});
    XColorBtn keeper;  // holds the palette
    XColorBtnDlg grid;
    grid.SetCurrentColor(RGB(255, 0, 0));
    ASSERT_TRUE(grid.Create(host_));
    ::ShowWindow(grid, SW_SHOWNA);
    HWND red = ::GetDlgItem(grid, XColorBtnDlg::kFirstCell + 13);
    ::SetFocus(red);
    const struct { int cell; const wchar_t *name, *description; bool selected; } cases[] = {
        {0, L"Black", L"#000000", false},
        {13, L"Rot", L"#FF0000", true},
        {9, L"Sky blue", L"#A6CAF0", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cell);
        const auto acc = AccessibleOf(::GetDlgItem(grid, XColorBtnDlg::kFirstCell + c.cell));
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.Name(), c.name);
        EXPECT_EQ(acc.Description(), c.description);
        EXPECT_EQ(acc.Role(), ROLE_SYSTEM_LISTITEM);
        const long state = acc.State();
        EXPECT_TRUE(state & STATE_SYSTEM_SELECTABLE);
        EXPECT_EQ((state & STATE_SYSTEM_SELECTED) != 0, c.selected);
        EXPECT_EQ((state & STATE_SYSTEM_FOCUSED) != 0, c.selected) << "the focus is on the current colour";
    }
    const auto other = AccessibleOf(::GetDlgItem(grid, XColorBtnDlg::kOtherButton));
    EXPECT_EQ(other.Name(), L"Other...");
    EXPECT_EQ(other.Role(), ROLE_SYSTEM_PUSHBUTTON);
}

// ---- Search fields ------------------------------------------------------------------------

using SearchFieldAccessibilityTest = qvtest::HostTest;

TEST_F(SearchFieldAccessibilityTest, FieldEditAndButtonsAreNamedAndAPathChangeIsAnnounced) {
    Glossary german({{L"Browse", L"Durchsuchen"}, {L"Open", L"Öffnen"}});
    std::unique_ptr<XBaseSearchCtrl> fields[] = {std::make_unique<XSearchFolderCtrl>(),
                                                  std::make_unique<XSearchFileCtrl>(),
                                                  std::make_unique<XReadOnlySearchFileOpenCtrl>()};
    for (auto& field : fields) {
        SCOPED_TRACE(field->GetOpenButton() ? "with an open button" : "browse only");
        XBaseStaticText label;
        ASSERT_TRUE(label.Create(L"&Plan folder", 100, Row(0), font_, host_));
        field->SetValidation(false);
        ASSERT_TRUE(field->Create(L"C:\\plans", 0, Row(1), font_, host_, 101));
        const auto frame = AccessibleOf(*field);
        EXPECT_EQ(frame.Name(), L"Plan folder") << "the label, not the path the frame's text holds";
        EXPECT_EQ(frame.Role(), ROLE_SYSTEM_GROUPING);
        const auto edit = AccessibleOf(field->GetEditCtrl());
        EXPECT_EQ(edit.Name(), L"Plan folder");
        EXPECT_EQ(edit.Value(), L"C:\\plans");
        const auto browse = AccessibleOf(field->GetBrowseButton());
        EXPECT_EQ(browse.Name(), L"Durchsuchen");
        EXPECT_EQ(browse.Role(), ROLE_SYSTEM_PUSHBUTTON);
        EXPECT_EQ((browse.State() & STATE_SYSTEM_UNAVAILABLE) != 0, field->IsReadOnly());
        if (qv::Button* open = field->GetOpenButton()) {
            EXPECT_EQ(AccessibleOf(*open).Name(), L"Öffnen");
            EXPECT_EQ(AccessibleOf(*open).Role(), ROLE_SYSTEM_PUSHBUTTON);
        }
        qvtest::WinEventRecorder events;
        ::SetWindowTextW(*field, L"D:\\x");
        EXPECT_EQ(Count(events, field->GetEditCtrl(), EVENT_OBJECT_VALUECHANGE), 1u);
        EXPECT_EQ(AccessibleOf(field->GetEditCtrl()).Value(), L"D:\\x");
        field.reset();
    }
}

// ---- Viewers -----------------------------------------------------------------------------

class ViewerAccessibilityTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        bitmap_ = TempPath(L"qv_reader_site.bmp");
        page_ = TempPath(L"qv_reader_notes.htm");
        picture_ = TempPath(L"qv_reader_photo.jpg");
        ASSERT_TRUE(WriteBitmap(bitmap_));
        ASSERT_TRUE(WriteText(page_, "<html ><body>Notes</body></html>\n"));
        ASSERT_TRUE(WriteText(picture_, "not really a picture"));
    }
    void TearDown() override {
        for (const auto& f : {bitmap_, page_, picture_}) ::DeleteFileW(f.c_str());
        HostTest::TearDown();
    }
    std::wstring bitmap_, page_, picture_;
};

TEST_F(ViewerAccessibilityTest, FieldButtonsAndTheViewerAreReadByWhatTheyShow) {
    XBaseStaticText label;
    ASSERT_TRUE(label.Create(L"Site plan", 100, Row(0), font_, host_));
    XImageView view;
    UINT id = 200;
    ASSERT_TRUE(view.CreateCtrl(id, RECT{10, 40, 410, 340}, font_, host_));
    EXPECT_EQ(AccessibleOf(view).Role(), ROLE_SYSTEM_GROUPING);
    const struct { UINT offset; const wchar_t* name; } buttons[] = {
        {XImageView::kReloadOffset, L"Reload image"},
        {XImageView::kOpenOffset, L"Edit image"},
        {XImageView::kBrowserOffset, L"Open in web browser"},
    };
    for (const auto& b : buttons) {
        const auto acc = AccessibleOf(view.GetButton(b.offset));
        EXPECT_EQ(acc.Name(), b.name);
        EXPECT_EQ(acc.Role(), ROLE_SYSTEM_PUSHBUTTON);
    }

    const std::wstring missing = TempPath(L"qv_reader_missing.bmp");
    const struct {
        std::wstring file;
        long role;                 // of the viewer; 0: "File not found" shows
        const wchar_t* name;       // of the viewer
        bool described;            // the HTML view says it has no engine
    } cases[] = {
        {bitmap_, ROLE_SYSTEM_GRAPHIC, L"qv_reader_site.bmp", false},
        {page_, ROLE_SYSTEM_DOCUMENT, L"qv_reader_notes.htm", !XHTMLView::HtmlEngineAvailable()},
        {picture_, ROLE_SYSTEM_GRAPHIC, L"qv_reader_photo.jpg", !XHTMLView::HtmlEngineAvailable()},
        {missing, 0, nullptr, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.file);
        qvtest::WinEventRecorder events;
        view.SetFilename(c.file);
        const auto edit = AccessibleOf(view.GetFileEdit());
        EXPECT_EQ(edit.Name(), L"Site plan") << "named by the view's label, whatever the view shows";
        EXPECT_EQ(edit.Value(), c.file);
        EXPECT_EQ(Count(events, view.GetFileEdit(), EVENT_OBJECT_VALUECHANGE), 1u);
        HWND notFound = ::GetDlgItem(view, static_cast<int>(200 + XImageView::kNotFoundOffset));
        if (c.role == 0) {
            ASSERT_TRUE(view.IsFileNotFoundShown());
            EXPECT_EQ(AccessibleOf(notFound).Name(), L"File not found");
            EXPECT_EQ(AccessibleOf(view).Description(), L"File not found");
            continue;
        }
        EXPECT_NE(AccessibleOf(view).Description(), L"File not found");
        HWND viewer = view.GetViewerKind() == XImageView::kBitmapViewer ? view.GetDIBView()->m_hWnd
                                                                        : view.GetHTMLView()->m_hWnd;
        const auto acc = AccessibleOf(viewer);
        EXPECT_EQ(acc.Role(), c.role);
        EXPECT_EQ(acc.Name(), c.name);
        if (c.described) {
            EXPECT_EQ(acc.Description(), view.GetHTMLView()->GetMessageText());
        }
    }
}

// ---- Font and colour chooser ----------------------------------------------------------

using FontColorAccessibilityTest = qvtest::HostTest;

TEST_F(FontColorAccessibilityTest, ThePreviewReadsTheChoiceAndAnnouncesItsChanges) {
    Glossary german({{L"Bold + Italic", L"Fett + Kursiv"}, {L"Red", L"Rot"}, {L"Fonts and colors", L"Schriften"}});
    XBaseStaticText label;
    ASSERT_TRUE(label.Create(L"Heading font", 100, Row(0), font_, host_));
    XBaseColorControlNew chooser;
    ASSERT_TRUE(chooser.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, Row(1), host_, 101));
    EXPECT_EQ(AccessibleOf(chooser).Name(), L"Heading font");
    EXPECT_EQ(AccessibleOf(chooser).Role(), ROLE_SYSTEM_GROUPING);
    const auto button = AccessibleOf(*chooser.GetButton());
    EXPECT_EQ(button.Name(), L"Schriften");
    EXPECT_EQ(button.Role(), ROLE_SYSTEM_PUSHBUTTON);
    HWND preview = *chooser.GetPreview();
    EXPECT_EQ(AccessibleOf(preview).Name(), L"Heading font");
    EXPECT_EQ(AccessibleOf(preview).Value(), L"Arial 12, Normal, Black on White");

    qvtest::WinEventRecorder events;
    const struct {
        const char* step;
        std::function<void()> change;
        size_t announced;
        const wchar_t* value;
    } steps[] = {
        {"face", [&] { chooser.SetFontName(L"Courier New"); }, 1, L"Courier New 12, Normal, Black on White"},
        {"bold and italic", [&] { chooser.SetFontBold(true); chooser.SetFontItalic(true); }, 2,
         L"Courier New 12, Fett + Kursiv, Black on White"},
        {"the same size", [&] { chooser.SetFontSize(12); }, 0, L"Courier New 12, Fett + Kursiv, Black on White"},
        {"colours", [&] { chooser.SetTextColor(RGB(255, 0, 0)); chooser.SetBGColorHTML(L"#1e90ff"); }, 2,
         L"Courier New 12, Fett + Kursiv, Rot on #1E90FF"},
        {"read-only: no background", [&] { chooser.SetControlForReadOnly(true); }, 1,
         L"Courier New 12, Fett + Kursiv, Rot"},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.step);
        events.Clear();
        s.change();
        EXPECT_EQ(Count(events, preview, EVENT_OBJECT_VALUECHANGE), s.announced);
        EXPECT_EQ(AccessibleOf(preview).Value(), s.value);
    }
}

TEST_F(FontColorAccessibilityTest, TheDialogsListsAreNamedByTheirLabelsAndTheSwatchesByTheirColours) {
    XBaseColorControlDlg dialog;
    dialog.SetTextColor(RGB(255, 0, 0));
    ASSERT_TRUE(dialog.Create(host_));
    ::ShowWindow(dialog, SW_SHOWNA);
    using D = XBaseColorControlDlg;
    const struct { int id; const wchar_t *name, *value; long role; } items[] = {
        {D::kFaceList, L"Font", L"Arial", -1},
        {D::kHeightList, L"Height", L"12", -1},
        {D::kStyleList, L"Style", L"Normal", -1},
        {D::kTextSwatch, L"Text Color", L"Red", ROLE_SYSTEM_STATICTEXT},
        {D::kBackSwatch, L"Background Color", L"White", ROLE_SYSTEM_STATICTEXT},
        {D::kTextColorButton, L"Choose text color", L"", ROLE_SYSTEM_PUSHBUTTON},
        {D::kBackColorButton, L"Choose background color", L"", ROLE_SYSTEM_PUSHBUTTON},
        {D::kPreview, L"Preview", L"Arial 12, Normal, Red on White", ROLE_SYSTEM_STATICTEXT},
    };
    for (const auto& i : items) {
        SCOPED_TRACE(i.name);
        const auto acc = AccessibleOf(::GetDlgItem(dialog, i.id));
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.Name(), i.name);
        EXPECT_EQ(acc.Value(), i.value);
        if (i.role >= 0) {
            EXPECT_EQ(acc.Role(), i.role);
        }
    }
    // Tab goes label by label: the face list first, the dialog's buttons last.
    HWND first = ::GetNextDlgTabItem(dialog, nullptr, FALSE);
    EXPECT_EQ(::GetDlgCtrlID(first), D::kFaceList);
    EXPECT_EQ(::GetDlgCtrlID(::GetNextDlgTabItem(dialog, first, TRUE)), D::kDefaultButton);
    dialog.DestroyWindow();
}

// ---- Rich text ---------------------------------------------------------------------------

using RichTextAccessibilityTest = qvtest::HostTest;

TEST_F(RichTextAccessibilityTest, FieldsAreNamedByTheirLabelsValuedByTheirTextAndAnnounceChanges) {
    std::unique_ptr<XBaseRTFEdit> fields[] = {std::make_unique<XBaseRTFEdit>(),
                                               std::make_unique<XBaseReadOnlyRTFEdit>()};
    for (auto& field : fields) {
        const bool readOnly = field.get() == fields[1].get();
        SCOPED_TRACE(readOnly ? "read-only" : "editable");
        XBaseStaticText label;
        ASSERT_TRUE(label.Create(L"&Remarks", 100, Row(0), font_, host_));
        ASSERT_TRUE(field->Create(RECT{10, 40, 300, 120}, host_, 101));
        qvtest::WinEventRecorder events;
        const struct { const char* how; std::function<void()> change; const wchar_t* value; } changes[] = {
            {"set by the host", [&] { field->SetWindowText(L"First line"); }, L"First line"},
            {"a document", [&] { field->SetRTF(L"{\\rtf1\\ansi {\\b Bold} plain}"); }, L"Bold plain"},
        };
        for (const auto& c : changes) {
            SCOPED_TRACE(c.how);
            events.Clear();
            c.change();
            const auto acc = AccessibleOf(*field);
            EXPECT_EQ(acc.Name(), L"Remarks");
            EXPECT_EQ(acc.Value(), c.value);
            EXPECT_GE(Count(events, *field, EVENT_OBJECT_VALUECHANGE), 1u);
        }
        EXPECT_EQ(field->IsReadOnly(), readOnly);
        if (!readOnly) {
            field->SetFocus();
            field->SetSel(0, -1);
            events.Clear();
            qvtest::TypeChars(*field, L"typed");
            EXPECT_GE(Count(events, *field, EVENT_OBJECT_VALUECHANGE), 1u) << "typing is announced";
            EXPECT_EQ(AccessibleOf(*field).Value(), L"typed");
        }
        field.reset();
    }
}

TEST_F(RichTextAccessibilityTest, TheFontDialogsFieldsAreNamed) {
    XGetFontNameDlg names;
    names.SetFontNames({L"Arial", L"Courier New"});
    names.SetFontName(L"Arial");
    XGetFontSizeDlg sizes;
    sizes.SetFontSize(240);
    const struct { qv::Dialog* dialog; int id; const wchar_t *name, *value; } cases[] = {
        {&names, 5023, L"Select a font", L"Arial"},
        {&sizes, 5024, L"Font size in points:", L"12"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(c.dialog->Create(host_));
        ::ShowWindow(*c.dialog, SW_SHOWNA);
        const auto acc = AccessibleOf(::GetDlgItem(*c.dialog, c.id));
        EXPECT_EQ(acc.Name(), c.name);
        EXPECT_EQ(acc.Value(), c.value);
        c.dialog->DestroyWindow();
    }
}

}  // namespace
