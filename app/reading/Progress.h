#pragma once

#include "JOBXCLSDLL.h"

#include <string>
#include <string_view>

// A progress line on standard error that overwrites itself.
class ProgressLine
{
public:
    ProgressLine() = default;
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine() { Clear(); }

    void SetPercent(int percent);
    void SetText(std::string_view text);
    void Draw();
    // Clears the line and moves the cursor to its start. Does nothing if nothing was drawn.
    void Clear();

private:
    int m_nPercent = 0;
    std::string m_sText;
    bool m_isDrawn = false;
};

// The windows for the library's reports, drawn as a progress line.
class ProgressBarWindow : public CWnd
{
public:
    explicit ProgressBarWindow(ProgressLine& line) : m_line(line) {}

    BOOL UpdateData(BOOL saveAndValidate = TRUE) override;
    CWnd* SetFocus() override;
    void SetWindowTextA(LPCSTR text) override;
    LRESULT SendMessageA(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) override;
    BOOL RedrawWindow(const RECT* rectangle = nullptr, CRgn* region = nullptr, UINT flags = 0x105) override;

private:
    ProgressLine& m_line;
};

class StatusTextWindow : public CWnd
{
public:
    explicit StatusTextWindow(ProgressLine& line) : m_line(line) {}

    BOOL UpdateData(BOOL saveAndValidate = TRUE) override;
    CWnd* SetFocus() override;
    void SetWindowTextA(LPCSTR text) override;
    LRESULT SendMessageA(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) override;
    BOOL RedrawWindow(const RECT* rectangle = nullptr, CRgn* region = nullptr, UINT flags = 0x105) override;

private:
    ProgressLine& m_line;
};

// Shows a progress line while it lives, unless there is no terminal or `quiet` is set.
class ProgressReport
{
public:
    ProgressReport(CJOBX& job, bool quiet);
    ProgressReport(const ProgressReport&) = delete;
    ProgressReport& operator=(const ProgressReport&) = delete;
    ~ProgressReport();

private:
    CJOBX& m_job;
    ProgressLine m_line;
    ProgressBarWindow m_bar{m_line};
    StatusTextWindow m_status{m_line};
};
