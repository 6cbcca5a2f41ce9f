// Translation operations used by every control for texts shown to the user.
// They go through the translation service (frame/services.h); the embedded
// default returns texts unchanged or looks them up in a host-loaded catalog.
#pragma once

#include <windows.h>

#include "quorvel/common/api.h"

// Translates a fixed English source text. The result stays valid at least
// until the next 64 calls on this thread; callers copy it at once. When the
// translation fails (the service throws), CoTranslateText answers the text
// itself and CoTranslateText2 an empty text.
QV_API const wchar_t* CoTranslateText(const wchar_t* text);
// The same for text built at run time.
QV_API wchar_t* CoTranslateText2(const wchar_t* text);
// Narrow source text (ASCII/ANSI code page), widened before translation.
QV_API wchar_t* CoTranslateText2(const char* text);
// Translates a dialog's caption and the texts of all its child controls; a
// text whose translation fails stays as it is.
QV_API void CoTranslateWindow(HWND dialog);
