// qv::ImageList: an owned image list (HIMAGELIST) with the operations that
// lists and their hosts use: create, add icons or bitmaps, draw an image,
// count and measure the images.
//
// The object destroys the list it holds when it goes, so a list control that
// shows it must not outlive it (the report list does not take ownership of
// an image list it is given). Move-only. Inline and without state beyond the
// handle, so the class needs no export.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <utility>

namespace qv {

class ImageList {
public:
    HIMAGELIST m_hImageList = nullptr;

    ImageList() noexcept = default;
    ~ImageList() { DeleteImageList(); }
    ImageList(ImageList&& other) noexcept : m_hImageList(other.Detach()) {}
    ImageList& operator=(ImageList&& other) noexcept {
        if (this != &other) Attach(other.Detach());
        return *this;
    }
    ImageList(const ImageList&) = delete;
    ImageList& operator=(const ImageList&) = delete;

    operator HIMAGELIST() const noexcept { return m_hImageList; }
    HIMAGELIST GetSafeHandle() const noexcept { return m_hImageList; }

    // A new list of cx x cy images (ILC_COLOR32 | ILC_MASK, ...), replacing
    // one held before.                                                       // ImageList_Create
    bool Create(int cx, int cy, UINT flags, int initial, int grow) noexcept {
        HIMAGELIST list = ::ImageList_Create(cx, cy, flags, initial, grow);
        if (!list) return false;
        Attach(list);
        return true;
    }
    // Each answers the new image's index, or -1.
    int Add(HICON icon) noexcept { return m_hImageList ? ::ImageList_AddIcon(m_hImageList, icon) : -1; }  // ImageList_ReplaceIcon
    int Add(HBITMAP bitmap, HBITMAP mask) noexcept { return m_hImageList ? ::ImageList_Add(m_hImageList, bitmap, mask) : -1; }  // ImageList_Add
    int Add(HBITMAP bitmap, COLORREF maskColor) noexcept { return m_hImageList ? ::ImageList_AddMasked(m_hImageList, bitmap, maskColor) : -1; }  // ImageList_AddMasked
    // Draws image `image` at `pt` with ILD_* `style`.                           // ImageList_Draw
    bool Draw(HDC dc, int image, POINT pt, UINT style) const noexcept {
        return m_hImageList && ::ImageList_Draw(m_hImageList, image, dc, pt.x, pt.y, style) != FALSE;
    }
    int GetImageCount() const noexcept { return m_hImageList ? ::ImageList_GetImageCount(m_hImageList) : 0; }  // ImageList_GetImageCount
    // The size of every image of the list.                                    // ImageList_GetIconSize
    bool GetIconSize(int& cx, int& cy) const noexcept {
        cx = cy = 0;
        return m_hImageList && ::ImageList_GetIconSize(m_hImageList, &cx, &cy) != FALSE;
    }

    // Takes ownership of `list` (destroying one held before).
    void Attach(HIMAGELIST list) noexcept {
        if (m_hImageList && m_hImageList != list) ::ImageList_Destroy(m_hImageList);
        m_hImageList = list;
    }
    // Gives up ownership without destroying.
    HIMAGELIST Detach() noexcept { return std::exchange(m_hImageList, nullptr); }
    bool DeleteImageList() noexcept {
        if (!m_hImageList) return false;
        ::ImageList_Destroy(std::exchange(m_hImageList, nullptr));
        return true;
    }
};

}  // namespace qv
