#include "foundation/framework/CWnd.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace
{
// A window that notes what it was asked.
class NotingWindow : public CWnd
{
public:
    BOOL UpdateData(BOOL saveAndValidate) override
    {
        m_calls.push_back("update " + std::to_string(saveAndValidate));
        return TRUE;
    }
    CWnd* SetFocus() override
    {
        m_calls.emplace_back("focus");
        return nullptr;
    }
    void SetWindowTextA(LPCSTR text) override { m_calls.push_back(std::string("text ") + text); }
    LRESULT SendMessageA(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        m_calls.push_back("message " + std::to_string(message) + ' ' + std::to_string(wParam) + ' ' +
                          std::to_string(lParam));
        return 7;
    }
    BOOL RedrawWindow(const RECT* rectangle, CRgn* region, UINT flags) override
    {
        m_calls.push_back("redraw " + std::to_string(rectangle == nullptr && region == nullptr) + ' ' +
                          std::to_string(flags));
        return TRUE;
    }

    std::vector<std::string> m_calls;
};

std::string g_sShown;

int ShowInTest(CWnd* owner, LPCSTR text, LPCSTR caption, UINT style)
{
    g_sShown = std::string(owner != nullptr ? "owned " : "") + caption + '|' + text + '|' + std::to_string(style);
    return 2;
}

int CountInTest(CWnd* /*owner*/, LPCSTR /*text*/, LPCSTR /*caption*/, UINT /*style*/)
{
    return 1;
}
} // namespace

TEST(Window, Calls_ReachTheHostsOwnWithTheirDefaults)
{
    NotingWindow noting;
    CWnd& window = noting;
    EXPECT_TRUE(window.UpdateData());
    window.UpdateData(FALSE);
    EXPECT_EQ(window.SetFocus(), nullptr);
    window.SetWindowTextA("reading");
    EXPECT_EQ(window.SendMessageA(0x402, 20), 7);
    EXPECT_TRUE(window.RedrawWindow());
    EXPECT_EQ(noting.m_calls, (std::vector<std::string>{"update 1", "update 0", "focus", "text reading",
                                                        "message 1026 20 0", "redraw 1 261"}));
}

TEST(MessageBox, GoesToTheHandlerThatWasSet)
{
    NotingWindow owner;
    const JobxMessageBoxHandler before = SetMessageBoxHandler(ShowInTest);
    EXPECT_EQ(MessageBoxA(&owner, "text", "caption", 48), 2);
    EXPECT_EQ(g_sShown, "owned caption|text|48");
    EXPECT_EQ(SetMessageBoxHandler(before), &ShowInTest);
}

TEST(MessageBox, PrintsToStandardErrorWhenNoHandlerIsSet)
{
    const JobxMessageBoxHandler before = SetMessageBoxHandler(nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxA(nullptr, "There is no 100%s!", "WARNING", 48), 1);
    EXPECT_EQ(MessageBoxA(nullptr, nullptr, nullptr, 0), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "WARNING: There is no 100%s!\n: \n");
    SetMessageBoxHandler(before);
}

TEST(MessageBox, HandlerMayBeSetWhileOthersShow)
{
    const JobxMessageBoxHandler before = SetMessageBoxHandler(CountInTest);
    std::thread setting(
        []
        {
            for (int i = 0; i < 1000; ++i)
                SetMessageBoxHandler(CountInTest);
        });
    int shown = 0;
    for (int i = 0; i < 1000; ++i)
        shown += MessageBoxA(nullptr, "", "", 0);
    setting.join();
    EXPECT_EQ(shown, 1000);
    SetMessageBoxHandler(before);
}
