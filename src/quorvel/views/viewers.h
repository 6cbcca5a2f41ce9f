// Viewers for a file named by the form: a picture or a page shown inside the
// form, with the file's name and buttons to reload it, open it in its own
// application and open it in the web browser.
//
// XImageView chooses the viewer by the up to three characters after the last
// "." of the file name, ignoring case: "gif", "jpg", "htm" (so ".html" too)
// and "txt" go to the embedded web browser (XHTMLView), "bmp" to the bitmap
// viewer (XDIBView). Any other name, a file that does not exist, and a bitmap
// that cannot be read show "File not found" in place of a viewer.
//
// The embedded web browser needs the system's HTML engine. Where it is
// missing (a system without it, or Wine without its Gecko package), the HTML
// view says so in its own area ("No HTML engine is available to show this
// file."), writes one log entry and shows nothing else; the bitmap viewer and
// the buttons work everywhere.
//
// Child ids: the image view takes the id it is created with, and its parts
// the ids after it: id + 1 the file-name field, id + 2 "Reload", id + 3
// "Open in its application", id + 4 the "File not found" text, id + 5 "Open
// in the web browser". The viewer window takes the image view's own id.
// CreateCtrl advances the caller's id past these (by kIdCount).
//
// Buttons: reload (the library's bitmap 145), open in the associated
// application (143) and open in the web browser (142), at the right of the
// file-name field. "Open" asks the shell to open the file with the verb
// "open" in the temporary folder; a page that an office suite saved as HTML
// is first copied into the temporary folder under its office extension
// (".doc" or ".xls", replacing an earlier copy of that name), so that the
// application that made it opens it. When the shell fails, a box "Open
// application" names the reason. The web browser is the one registered for
// "iexplore.exe"; when none is registered or it cannot start, nothing
// happens. In browser-only mode (SetBrowserOnly) every button opens the web
// browser.
//
// Editing the file name in the field shows the new file at once and passes
// the field's EN_CHANGE on to the parent (with the field's id and window).
//
// Colours: the image view is a coloured field (XBaseColor). The text colour
// is that of the file-name field and of "File not found"; the background
// colour fills the field, the view and the bitmap viewer around the picture.
// They start as the system's window text and window colours.
//
// Screen readers: the image view is a group named by the label before it,
// and so is its file-name field, whose value is the name and whose changes
// are announced. The buttons are read by what they do ("Reload image",
// "Edit image", "Open in web browser", translated), not as pictures. The
// viewer is read as a graphic (a picture) or a document (a page or a text)
// named by the file's name without its folder; where "File not found" shows
// instead, the text is read, and the image view carries it as its
// description.
//
// DPI: the row of the field and the buttons, the gap below it and the
// buttons' faces (enlarged by whole multiples, so they stay sharp) follow
// the DPI of the view; a DPI change lays it out again.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/window.h"
#include "quorvel/windows/named_button.h"

// A device-independent bitmap from a .bmp file, drawn through the system's
// DrawDib functions. Bitmaps of 1, 4, 8, 16, 24 and 32 bits per pixel, bottom-
// up or top-down, uncompressed or with bit fields, are read; one larger than
// the window is scaled down to fit, keeping its proportions, and the rest of
// the window is filled with the background colour. The viewer answers
// WM_PRINTCLIENT, so the picture can be drawn into any device context.
class QV_API XDIBView : public qv::Window, public qv::AccessibleSource {
public:
    XDIBView() noexcept;
    ~XDIBView() override;

    // Creates the viewer window (the library's own class) on `parent`.
    bool Create(const RECT& rect, HWND parent, UINT id, DWORD style = WS_CHILD | WS_VISIBLE);
    // Reads the bitmap file and shows it. False (and the previous picture
    // gone) when the file is missing, unreadable or no bitmap it can draw.
    bool DisplayBMP(const std::wstring& path);
    // Forgets the picture.
    void Clear();
    bool HasBitmap() const noexcept { return !m_dib.empty(); }
    // The picture's size in pixels (0 x 0 without one) and bits per pixel.
    SIZE GetBitmapSize() const noexcept;
    int GetBitCount() const noexcept;
    // Where the picture is drawn in a client area of this size.
    RECT GetPictureRect(const RECT& client) const noexcept;
    void SetBkColor(COLORREF colour);
    COLORREF GetBkColor() const noexcept { return m_bkColor; }
    // Draws the picture and the background into `dc` over `client`.
    virtual void Draw(HDC dc, const RECT& client);
    // The file the picture came from ("" without one).
    const std::wstring& GetPath() const noexcept { return m_path; }

    // qv::AccessibleSource: a graphic named by its file's name.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnPaint() override;                                               // WM_PAINT
    BOOL OnEraseBkgnd(HDC dc) override;                                    // WM_ERASEBKGND
    void OnDestroy() override;                                             // WM_DESTROY

private:
    void CloseDrawDib() noexcept;
    std::wstring m_path;
    std::vector<unsigned char> m_dib;  // the packed bitmap: header, colours, pixels
    size_t m_bitsOffset = 0;           // where the pixels start in m_dib
    HANDLE m_drawDib = nullptr;        // HDRAWDIB
    COLORREF m_bkColor;
    qv::Brush m_bkBrush;
};

// The system's web-browser control, hosted in the view's window by a small
// OLE container of the library's own. Without the system's HTML engine the
// view shows GetMessageText() in its area instead (see the header comment).
class QV_API XHTMLView : public qv::Window, public qv::AccessibleSource {
public:
    XHTMLView() noexcept;
    ~XHTMLView() override;

    // Creates the view window and, when the HTML engine is there, the
    // browser in it. The window is made either way; without an engine the
    // view only shows the message (HasBrowser() answers false).
    bool Create(const RECT& rect, HWND parent, UINT id, DWORD style = WS_CHILD | WS_VISIBLE);
    // Shows a page, picture or text file (a path or a URL). False without a
    // browser or when the browser refuses it.
    bool DisplayURL(const std::wstring& url);
    // The address last given to DisplayURL.
    const std::wstring& GetURL() const noexcept { return m_url; }
    // Switches the browser's tool bar, menu bar, status bar, address bar,
    // theatre and full-screen modes on or off (the viewer switches them off).
    bool SetBrowserBars(bool show);
    // Whether a browser is hosted.
    bool HasBrowser() const noexcept;
    // The text the view shows where it has no browser ("" with one).
    std::wstring GetMessageText() const;
    // Whether this system can host the browser: the HTML engine's document
    // class can be loaded.
    static bool HtmlEngineAvailable();

    // qv::AccessibleSource: a graphic (a picture) or a document (a page, a
    // text) named by the file's name; without a browser, the text the view
    // shows instead is its description.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleDescription(long child, std::wstring& description) override;
    bool AccessibleRole(long child, long& role) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnPaint() override;                                               // WM_PAINT
    BOOL OnEraseBkgnd(HDC dc) override;                                    // WM_ERASEBKGND
    void OnSize(UINT type, int cx, int cy) override;                       // WM_SIZE
    void OnDestroy() override;                                             // WM_DESTROY

private:
    struct Host;
    void ReleaseBrowser() noexcept;
    // Fills the view and writes GetMessageText() in its middle.
    void DrawMessage(HDC dc);
    Host* m_host = nullptr;      // the container and the browser, null without one
    bool m_oleInitialized = false;
    std::wstring m_url;
};

// The viewer with its file-name field and buttons (see the header comment).
class QV_API XImageView : public qv::Window, public XBaseColor, public qv::AccessibleSource, public qv::DpiListener {
public:
    enum : UINT {
        kFileEditOffset = 1,
        kReloadOffset = 2,
        kOpenOffset = 3,
        kNotFoundOffset = 4,
        kBrowserOffset = 5,
        kIdCount = 6,  // the ids an image view takes, its own included
    };
    // The library's bitmaps on the buttons.
    enum : UINT { kBrowserFace = 142, kOpenFace = 143, kReloadFace = 145 };
    // The viewer being shown.
    enum ViewerKind { kNoViewer = 0, kHtmlViewer = 1, kBitmapViewer = 2 };

    XImageView();
    ~XImageView() override;

    // Creates the view (class "STATIC") on `parent` with id `id`, its "File
    // not found" text and, for this class, the file-name field, the buttons
    // and their tooltips; `font` (null: the parent's) for the field and the
    // text. Advances `id` by kIdCount. False for a null or destroyed parent.
    bool CreateCtrl(UINT& id, const RECT& rect, HFONT font, HWND parent);

    // Stores the name, shows it in the file-name field and shows the file.
    // Nothing happens before the view exists (or, in browser-only mode,
    // before the field exists).
    void SetFilename(const std::wstring& name);
    const std::wstring& GetFilename() const noexcept { return m_strFilename; }
    // Shows the current file again (it may have changed on disk). False when
    // "File not found" shows instead.
    bool DisplayFile();
    // Shows "File not found" in place of a viewer; DeleteErrorMsg hides it.
    void DispFileNotFound();
    void DeleteErrorMsg();
    bool IsFileNotFoundShown() const;
    // Opens the current file in the web browser (see the header comment).
    void StartIE();

    // A read-only view lets no one type a name into its field.
    void SetReadOnly(bool readOnly = true);
    bool IsReadOnly() const noexcept { return m_bReadOnly; }
    void SetBrowserOnly(bool browserOnly = true) noexcept { m_bBrowserOnly = browserOnly; }
    bool IsBrowserOnly() const noexcept { return m_bBrowserOnly; }

    ViewerKind GetViewerKind() const noexcept;
    XHTMLView* GetHTMLView() const noexcept { return m_pHTMLView.get(); }
    XDIBView* GetDIBView() const noexcept { return m_pDIBView.get(); }
    qv::Edit& GetFileEdit() noexcept { return m_editFile; }
    qv::Button& GetButton(UINT offset) noexcept;
    // Where the viewer goes in the client area.
    RECT ViewerGetSize() const;

    // Whether the file's first line starts an HTML file ("<html "); false
    // for any file error.
    static bool IsHTMLFile(const std::wstring& path);
    // The path to open for `path`: an office page's copy under its office
    // extension, or `path` itself.
    static std::wstring RenameIfHTMLIsforWordOrExcel(const std::wstring& path);
    // Copies `path` into the temporary folder as its name with extension
    // `extension`, replacing an older copy; the copy's path, or `path` when
    // the copy cannot be made.
    static std::wstring RenameFile(const std::wstring& path, const std::wstring& extension);

    // XBaseColor
    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;
    COLORREF GetTextColor() const noexcept { return m_scheme.TextColor(); }
    COLORREF GetBkColor() const noexcept { return m_scheme.BkColor(); }

    // qv::AccessibleSource: a group named by its label, described by "File
    // not found" while that shows.
    bool AccessibleDescription(long child, std::wstring& description) override;
    bool AccessibleRole(long child, long& role) override;
    // qv::DpiListener: lays the view out again and shows the faces anew.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnSize(UINT type, int cx, int cy) override;                       // WM_SIZE
    BOOL OnEraseBkgnd(HDC dc) override;                                    // WM_ERASEBKGND
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                         // WM_COMMAND
    void OnDestroy() override;                                             // WM_DESTROY

    // Whether this class has the file-name field and buttons.
    virtual bool HasAdditionalCtrls() const noexcept { return true; }
    // Whether this class shows a viewer of this kind.
    virtual bool ShowsKind(ViewerKind kind) const noexcept { return kind != kNoViewer; }
    // Creates the file-name field and the buttons.
    virtual bool DisplayAdditionalCtrls(HFONT font);
    virtual void CreateBtnToolTips();
    // Loads one of the library's bitmaps (with the button colour of the
    // user's scheme in place of its grey background).
    HBITMAP LoadBitmapW(UINT id);
    // Starts the web browser's command line; true when it started.
    virtual bool LaunchProcess(const std::wstring& commandLine);
    // The open command of the web browser registered for "iexplore.exe", or "".
    virtual std::wstring RegisteredBrowserCommand();

    // The steps of DisplayFile.
    void ViewerDelete();
    bool ViewerMakeInstance();
    bool ViewerCreate(const RECT& area);

private:
    void Layout(UINT dpi);
    void OpenInApplication(HWND button);

    UINT m_idBase = 0;
    std::wstring m_strFilename;
    qv::Edit m_editFile;
    std::unique_ptr<XHTMLView> m_pHTMLView;
    std::unique_ptr<XDIBView> m_pDIBView;
    qv::Static m_staticNotFound;
    qv::NamedButton m_buttons[3];  // reload, open, browser
    qv::Bitmap m_faces[3];
    qv::ToolTipCtrl m_tooltip;
    qv::ColorScheme m_scheme;
    bool m_bReadOnly = false;
    bool m_bBrowserOnly = false;
    bool m_settingName = false;  // SetFilename writes the field
};

// The viewer and its "File not found" text, without the file-name field and
// the buttons.
class QV_API XImageViewSimple : public XImageView {
public:
    XImageViewSimple() = default;

protected:
    bool HasAdditionalCtrls() const noexcept override { return false; }
};

// The reduced viewer for bitmaps only: any file that is not a ".bmp" shows
// "File not found".
class QV_API XBmpImageView : public XImageViewSimple {
public:
    XBmpImageView() = default;

protected:
    bool ShowsKind(ViewerKind kind) const noexcept override { return kind == kBitmapViewer; }
};
