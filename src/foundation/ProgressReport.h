// How reading reports progress to the host's windows.
#pragma once

#include "foundation/framework/CWnd.h"

constexpr UINT kSetPosition = 0x402; // the progress bar's set-position message
constexpr UINT kRedrawNow = 0x105;   // invalidate, erase, update at once

// Shows `text` at once; does nothing without a window.
inline void ShowStatus(CWnd* status, LPCSTR text)
{
    if (status == nullptr)
        return;
    status->SetWindowTextA(text);
    status->RedrawWindow(nullptr, nullptr, kRedrawNow);
}

inline void SetPosition(CWnd& progress, int position)
{
    progress.SendMessageA(kSetPosition, static_cast<WPARAM>(position), 0);
}
