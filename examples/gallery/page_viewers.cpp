// The viewers page: a picture written into the temporary folder when the
// page is built (a colour gradient as a 24-bit .bmp) in the full viewer with
// its file-name field and buttons, the same picture in the reduced bitmap
// viewer on a coloured background, a file that does not exist, and an HTML
// page, which shows in the embedded web browser where the system has an HTML
// engine and says that it has none where it is missing.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "gallery.h"
#include "quorvel/views/viewers.h"

namespace gallery {

namespace {

void Put(std::vector<unsigned char>& out, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<unsigned char>((value >> (8 * i)) & 0xFF));
}

// A 24-bit gradient: red to blue from left to right, fading to white at the
// bottom, with a dark frame.
std::vector<unsigned char> Gradient(int w, int h) {
    const uint32_t stride = ((static_cast<uint32_t>(w) * 24 + 31) / 32) * 4;
    std::vector<unsigned char> bmp{'B', 'M'};
    Put(bmp, 54 + stride * h, 4);
    Put(bmp, 0, 4);
    Put(bmp, 54, 4);
    Put(bmp, 40, 4); Put(bmp, w, 4); Put(bmp, h, 4); Put(bmp, 1, 2); Put(bmp, 24, 2);
    Put(bmp, 0, 4); Put(bmp, stride * h, 4); Put(bmp, 2835, 4); Put(bmp, 2835, 4); Put(bmp, 0, 4); Put(bmp, 0, 4);
    for (int row = 0; row < h; ++row) {
        const int y = h - 1 - row;  // bottom-up
        for (int x = 0; x < w; ++x) {
            const bool frame = x < 2 || y < 2 || x >= w - 2 || y >= h - 2;
            const int r = 255 * (w - 1 - x) / (w - 1), g = 64, b = 255 * x / (w - 1);
            const int white = 255 * y / (h - 1);  // towards white at the bottom
            const auto mix = [&](int c) { return frame ? 40 : c + (255 - c) * white / 320; };
            bmp.push_back(static_cast<unsigned char>(mix(b)));
            bmp.push_back(static_cast<unsigned char>(mix(g)));
            bmp.push_back(static_cast<unsigned char>(mix(r)));
        }
        for (uint32_t pad = static_cast<uint32_t>(w) * 3; pad < stride; ++pad) bmp.push_back(0);
    }
    return bmp;
}

std::wstring WriteTemp(const std::wstring& name, const void* data, size_t size) {
    wchar_t temp[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, temp);
    const std::wstring folder = std::wstring(temp) + L"quorvel_gallery\\";
    ::CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring path = folder + name;
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        ::WriteFile(file, data, static_cast<DWORD>(size), &written, nullptr);
        ::CloseHandle(file);
    }
    return path;
}

struct ViewerObjects : PageObjects {
    XImageView picture, missing, page;
    XBmpImageView reduced;
};

}  // namespace

std::unique_ptr<PageObjects> BuildViewersPage(HWND page) {
    auto objects = std::make_unique<ViewerObjects>();
    const std::vector<unsigned char> bmp = Gradient(240, 150);
    const std::wstring picture = WriteTemp(L"gradient.bmp", bmp.data(), bmp.size());
    const char html[] = "<html lang=\"en\">\r\n<body><h1>Quorvel</h1><p>An HTML page in the viewer.</p></body>\r\n</html>\r\n";
    const std::wstring htmlPath = WriteTemp(L"about.htm", html, sizeof html - 1);

    UINT id = 100;
    AddLabel(page, L"A bitmap (.bmp) in the viewer, with its file name and the buttons to reload it, open it in its "
                   L"application and open it in the web browser.",
             16, 8, 470, 36);
    objects->picture.CreateCtrl(id, RECT{16, 48, 486, 250}, GalleryFont(), page);
    objects->picture.SetFilename(picture);

    AddLabel(page, L"The same picture in the reduced bitmap viewer, on a background colour of its own.", 512, 8, 470, 36);
    objects->reduced.CreateCtrl(id, RECT{512, 48, 982, 250}, GalleryFont(), page);
    objects->reduced.SetBkColor(RGB(255, 248, 220));
    objects->reduced.SetFilename(picture);

    AddLabel(page, L"A file that does not exist.", 16, 266, 470, 20);
    objects->missing.CreateCtrl(id, RECT{16, 290, 486, 452}, GalleryFont(), page);
    objects->missing.SetFilename(L"C:\\plans\\missing drawing.bmp");

    AddLabel(page, L"An HTML page: the embedded web browser needs the system's HTML engine.", 512, 266, 470, 20);
    objects->page.CreateCtrl(id, RECT{512, 290, 982, 452}, GalleryFont(), page);
    objects->page.SetFilename(htmlPath);
    return objects;
}

}  // namespace gallery
