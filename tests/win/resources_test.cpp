// The library's button-face bitmaps as a host finds them in quorvel.dll:
// resource sizes, picture sizes, and the pixels LoadImage reads back.
#include <windows.h>

#include <gtest/gtest.h>

#include "quorvel/platform/module.h"

namespace {

struct Face {
    UINT id;
    DWORD resourceSize;  // SizeofResource
    LONG width, height;
    POINT ink;  // a pixel of the drawing (black); (0, 0) is button face
};

TEST(LibraryBitmapTest, FacesHaveTheirSizesAndPixels) {
    const Face faces[] = {
        {136, 1772, 10, 43, {7, 22}},  // lower splitter button held down: tip of the right arrow
        {137, 1772, 10, 43, {4, 22}},  // upper splitter button held down: tip of the left arrow
        {138, 1772, 10, 43, {6, 21}},  // lower splitter button: tip of the right arrow
        {139, 1772, 10, 43, {3, 21}},  // upper splitter button: tip of the left arrow
        {142, 344, 20, 20, {5, 11}},   // browse: first dot
        {143, 344, 20, 20, {3, 8}},    // viewer open: frame
        {145, 344, 20, 20, {10, 3}},   // viewer refresh: arrow head
    };
    HDC dc = ::CreateCompatibleDC(nullptr);
    for (const Face& face : faces) {
        HRSRC resource = ::FindResourceW(qv::LibraryModule(), MAKEINTRESOURCEW(face.id), RT_BITMAP);
        ASSERT_NE(resource, nullptr) << face.id;
        EXPECT_EQ(::SizeofResource(qv::LibraryModule(), resource), face.resourceSize) << face.id;

        HBITMAP bitmap = qv::LoadLibraryBitmap(face.id);
        ASSERT_NE(bitmap, nullptr) << face.id;
        BITMAP info{};
        ::GetObjectW(bitmap, sizeof(info), &info);
        EXPECT_EQ(info.bmWidth, face.width) << face.id;
        EXPECT_EQ(info.bmHeight, face.height) << face.id;
        HGDIOBJ old = ::SelectObject(dc, bitmap);
        EXPECT_EQ(::GetPixel(dc, 0, 0), RGB(192, 192, 192)) << face.id;
        EXPECT_EQ(::GetPixel(dc, face.ink.x, face.ink.y), RGB(0, 0, 0)) << face.id;
        ::SelectObject(dc, old);
        ::DeleteObject(bitmap);
    }
    ::DeleteDC(dc);
}

}  // namespace
