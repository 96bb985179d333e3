#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

class CRgn;
struct RECT;

// A host's window, as the library uses it: the progress bar and the status text of a long read. A host derives its own
// class. A program without windows needs none.
// Ownership: the library borrows windows and never deletes them.
// Threads:   the library calls a window only on the thread that called the library.
class JOBX_API CWnd : public CRaisingNew
{
public:
    CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd();

    // Transfers data between the window and the host's variables; FALSE shows the variables.
    virtual BOOL UpdateData(BOOL saveAndValidate = TRUE) = 0;
    // Gives the window the input focus; returns the window that had it, or null.
    virtual CWnd* SetFocus() = 0;
    // Sets the text of the window.
    virtual void SetWindowTextA(LPCSTR text) = 0;
    // Sends a window message. The library sends the progress bar's set-position message with the position in `wParam`.
    virtual LRESULT SendMessageA(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) = 0;
    // Redraws the window; the library passes no rectangle and no region.
    virtual BOOL RedrawWindow(const RECT* rectangle = nullptr, CRgn* region = nullptr, UINT flags = 0x105) = 0;
};

// Shows a message with a caption. Returns the button pressed (1 is OK).
using JobxMessageBoxHandler = int (*)(CWnd* owner, LPCSTR text, LPCSTR caption, UINT style);

// Sets the handler that shows the library's messages, for the whole process, and returns the previous one. Null sets
// the default, which prints "caption: text" and a line end to standard error and returns OK.
// Threads:   may be called at any time.
JOBX_API JobxMessageBoxHandler SetMessageBoxHandler(JobxMessageBoxHandler handler);

// Passes a message to the handler. `style` is the sum of the framework's button and icon numbers.
JOBX_API int MessageBoxA(CWnd* owner, LPCSTR text, LPCSTR caption, UINT style);
