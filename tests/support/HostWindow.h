// A host's window that writes down, in one list shared with others, what the library asks of it.
#pragma once

#include "foundation/framework/CWnd.h"

#include <string>
#include <utility>
#include <vector>

class HostWindow : public CWnd
{
public:
    HostWindow(std::string name, std::vector<std::string>& calls) : m_sName(std::move(name)), m_calls(calls) {}

    BOOL UpdateData(BOOL saveAndValidate) override
    {
        Note("UpdateData " + std::to_string(saveAndValidate));
        return TRUE;
    }
    CWnd* SetFocus() override
    {
        Note("SetFocus");
        return nullptr;
    }
    void SetWindowTextA(LPCSTR text) override { Note(std::string("SetWindowText ") + text); }
    LRESULT SendMessageA(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Note("SendMessage " + std::to_string(message) + " " + std::to_string(wParam) + " " + std::to_string(lParam));
        return 0;
    }
    BOOL RedrawWindow(const RECT* rectangle, CRgn* region, UINT flags) override
    {
        Note("RedrawWindow " + std::to_string(rectangle == nullptr) + std::to_string(region == nullptr) + " " +
             std::to_string(flags));
        return TRUE;
    }

private:
    void Note(const std::string& call) { m_calls.push_back(m_sName + ": " + call); }

    std::string m_sName;
    std::vector<std::string>& m_calls;
};

// Collects the message boxes while it lives; the default handler comes back after it.
class MessageBoxes
{
public:
    MessageBoxes()
    {
        Shown().clear();
        SetMessageBoxHandler(
            [](CWnd* owner, LPCSTR text, LPCSTR caption, UINT style)
            {
                Shown().push_back(std::string(owner == nullptr ? "" : "owner ") + caption + "|" + text + "|" +
                                  std::to_string(style));
                return 1;
            });
    }
    ~MessageBoxes() { SetMessageBoxHandler(nullptr); }
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;

    static std::vector<std::string>& Shown()
    {
        static std::vector<std::string> shown;
        return shown;
    }
};
