#include "foundation/framework/CWnd.h"

#include <atomic>
#include <cstdio>

namespace
{
constexpr int kOk = 1;

int PrintMessage(CWnd* /*owner*/, LPCSTR text, LPCSTR caption, UINT /*style*/)
{
    std::fprintf(stderr, "%s: %s\n", caption != nullptr ? caption : "", text != nullptr ? text : "");
    return kOk;
}

std::atomic<JobxMessageBoxHandler> g_messageBox{PrintMessage};
} // namespace

CWnd::CWnd() = default;

CWnd::~CWnd() = default;

JobxMessageBoxHandler SetMessageBoxHandler(JobxMessageBoxHandler handler)
{
    return g_messageBox.exchange(handler != nullptr ? handler : PrintMessage);
}

int MessageBoxA(CWnd* owner, LPCSTR text, LPCSTR caption, UINT style)
{
    return g_messageBox.load()(owner, text, caption, style);
}
