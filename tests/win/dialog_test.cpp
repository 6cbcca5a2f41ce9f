// Library dialogs: the template comes from the library even when the host has
// one with the same number; initialisation and data exchange run in order and
// in both directions; OK, Cancel and the close box end a modal dialog.
#include "quorvel/platform/dialog.h"

#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "quorvel/platform/module.h"
#include "resources/resource.h"
#include "support/host.h"

namespace {

using qvtest::HostTest;
using qvtest::TextOf;

// The font-size dialog with its edit field bound to an int.
class SizeDialog : public qv::Dialog {
public:
    SizeDialog() : Dialog(IDD_QV_FONTSIZE) {}
    int size = 12;
    std::vector<std::string> log;
    std::vector<UINT> postOnInit;  // WM_COMMAND ids (or WM_CLOSE) posted to itself
    bool failOnSave = false;
    bool throwOnInit = false;

protected:
    BOOL OnInitDialog() override {
        log.push_back("init");
        if (throwOnInit) throw std::runtime_error("init failed");
        const BOOL r = Dialog::OnInitDialog();
        for (UINT what : postOnInit) {
            if (what == WM_CLOSE) PostMessage(WM_CLOSE);
            else PostMessage(WM_COMMAND, MAKEWPARAM(what, BN_CLICKED), 0);
        }
        SetTimer(1, 5000);  // never hang the test run
        return r;
    }
    void DoDataExchange(qv::DataExchange* dx) override {
        log.push_back(dx->m_bSaveAndValidate ? "save" : "load");
        if (failOnSave && dx->m_bSaveAndValidate) {
            dx->PrepareCtrl(IDC_QV_FONTSIZE_EDIT);
            dx->Fail();
        }
        qv::DDX_Text(dx, IDC_QV_FONTSIZE_EDIT, size);
    }
    void OnTimer(UINT_PTR) override { EndDialog(-2); }
};

// The font-name dialog with its combo's text bound to a string.
class FaceDialog : public qv::Dialog {
public:
    FaceDialog() : Dialog(IDD_QV_FONTNAME) {}
    std::wstring face = L"Arial";

protected:
    void DoDataExchange(qv::DataExchange* dx) override { qv::DDX_Text(dx, IDC_QV_FONTNAME_COMBO, face); }
};

INT_PTR CALLBACK PlainProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

using DialogTest = HostTest;

TEST_F(DialogTest, LibraryTemplateWinsOverTheHostsOwnAndExchangesText) {
    // The host's template 140 is really there...
    HWND hostDlg = ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(140), host_, PlainProc, 0);
    ASSERT_NE(hostDlg, nullptr);
    EXPECT_EQ(TextOf(hostDlg), L"Host dialog 140");
    ::DestroyWindow(hostDlg);

    // ...and the library's dialog 140 still comes from the library.
    FaceDialog dlg;
    ASSERT_TRUE(dlg.Create(host_));
    EXPECT_EQ(std::tuple(qv::Window::FromHandle(dlg.m_hWnd), dlg.GetWindowText()), std::tuple(&dlg, L"Select a font"));
    HWND combo = dlg.GetDlgItem(IDC_QV_FONTNAME_COMBO);
    ASSERT_NE(combo, nullptr);

    // The modeless dialog exchanges its text both ways.
    EXPECT_EQ(TextOf(combo), L"Arial") << "OnInitDialog fills the controls";
    ::SetWindowTextW(combo, L"Courier New");
    EXPECT_TRUE(dlg.UpdateData(true));
    EXPECT_EQ(dlg.face, L"Courier New");
    dlg.face = L"Tahoma";
    EXPECT_TRUE(dlg.UpdateData(false));
    EXPECT_EQ(TextOf(combo), L"Tahoma");

    HWND hwnd = dlg.m_hWnd;
    dlg.EndDialog(IDOK);
    EXPECT_FALSE(::IsWindow(hwnd)) << "ending a modeless dialog destroys it";
    EXPECT_EQ(dlg.m_hWnd, nullptr);
}

TEST_F(DialogTest, IntegerExchangeRejectsWhatIsNotAnInteger) {
    struct Case { const wchar_t* text; bool ok; int value; } cases[] = {
        {L"14", true, 14},   {L" 7 ", true, 7},  {L"-3", true, -3},        {L"abc", false, 12},
        {L"", false, 12},    {L"1x", false, 12}, {L"99999999999", false, 12}, {L"2147483647", true, 2147483647},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << '"' << std::string(c.text, c.text + wcslen(c.text)) << '"');
        SizeDialog dlg;
        ASSERT_TRUE(dlg.Create(host_));
        HWND edit = dlg.GetDlgItem(IDC_QV_FONTSIZE_EDIT);
        EXPECT_EQ(TextOf(edit), L"12");
        ::SetWindowTextW(edit, c.text);
        EXPECT_EQ(dlg.UpdateData(true), c.ok);
        EXPECT_EQ(dlg.size, c.value);
        if (!c.ok) {
            EXPECT_EQ(::GetFocus(), edit) << "the failing control gets the focus";
        }
    }
}

TEST_F(DialogTest, ModalDialogRunsInitExchangeAndEnds) {
    struct Case {
        const char* what;
        std::vector<UINT> posted;
        bool failOnSave;
        INT_PTR result;
        std::vector<std::string> log;
    };
    const Case cases[] = {
        {"OK", {IDOK}, false, IDOK, {"init", "load", "save"}},
        {"Cancel", {IDCANCEL}, false, IDCANCEL, {"init", "load"}},
        {"close box", {WM_CLOSE}, false, IDCANCEL, {"init", "load"}},
        {"OK refused, then Cancel", {IDOK, IDCANCEL}, true, IDCANCEL, {"init", "load", "save"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        SizeDialog dlg;
        dlg.postOnInit = c.posted;
        dlg.failOnSave = c.failOnSave;
        EXPECT_EQ(dlg.DoModal(host_), c.result);
        EXPECT_EQ(std::tie(dlg.log, dlg.size, dlg.m_hWnd), std::tuple(c.log, 12, HWND{}));
    }
}

TEST_F(DialogTest, MissingTemplateFailsToOpen) {
    qv::Dialog dlg(4321);
    EXPECT_EQ(dlg.DoModal(host_), -1);
    EXPECT_FALSE(dlg.Create(host_));
}

// A dialog whose initialisation throws never shows controls it did not
// fill: it ends at once, as one that could not be created.
TEST_F(DialogTest, AThrowingInitialisationEndsTheDialogBeforeItShows) {
    for (const bool modal : {true, false}) {
        qv::Services::DefaultLogBook().Clear();
        SizeDialog dlg;
        dlg.throwOnInit = true;
        const bool created = modal ? dlg.DoModal(host_) != -1 : dlg.Create(host_);
        EXPECT_FALSE(created) << modal;
        EXPECT_EQ(std::tuple(dlg.m_hWnd, dlg.log.size()), std::tuple(HWND{}, size_t{1})) << modal;
        ASSERT_EQ(qv::Services::DefaultLogBook().Entries().size(), 1u) << modal;
        EXPECT_EQ(qvtest::Describe(qv::Services::DefaultLogBook().Entries()[0]),
                  L"Quorvel| qv::Dialog::DialogProc|1|Exception caught: init failed (message 0x0110)|80004005");
    }
}

}  // namespace
