#include "reading/Progress.h"

#include "output/Terminal.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdio>

namespace
{
constexpr UINT kSetPosition = 0x402;
constexpr int kBarWidth = 20;
constexpr std::size_t kLineWidth = 78; // a wrapped line could not be overwritten

// The start of a printable text, cut to at most `width` characters.
std::string_view Cut(std::string_view text, std::size_t width)
{
    while (CharacterCount(text) > width)
        text.remove_suffix(1);
    while (!IsUtf8(text))
        text.remove_suffix(1);
    return text;
}

void WriteToStandardError(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}
} // namespace

void ProgressLine::SetPercent(int percent)
{
    m_nPercent = std::clamp(percent, 0, 100);
}

void ProgressLine::SetText(std::string_view text)
{
    m_sText = Printable(text);
}

void ProgressLine::Draw()
{
    const auto filled = static_cast<std::size_t>(m_nPercent * kBarWidth / 100);
    const std::string line =
        fmt::format("[{:-<{}}] {:3}% {}", std::string(filled, '#'), kBarWidth, m_nPercent, m_sText);
    const std::string_view shown = Cut(line, kLineWidth);
    WriteToStandardError(fmt::format("\r{}{}", shown, std::string(kLineWidth - CharacterCount(shown), ' ')));
    m_isDrawn = true;
}

void ProgressLine::Clear()
{
    if (!m_isDrawn)
        return;
    WriteToStandardError(fmt::format("\r{}\r", std::string(kLineWidth, ' ')));
    m_isDrawn = false;
}

BOOL ProgressBarWindow::UpdateData(BOOL)
{
    m_line.Draw();
    return TRUE;
}

CWnd* ProgressBarWindow::SetFocus()
{
    return nullptr;
}

void ProgressBarWindow::SetWindowTextA(LPCSTR) {}

LRESULT ProgressBarWindow::SendMessageA(UINT message, WPARAM wParam, LPARAM)
{
    if (message == kSetPosition)
        m_line.SetPercent(static_cast<int>(wParam));
    return 0;
}

BOOL ProgressBarWindow::RedrawWindow(const RECT*, CRgn*, UINT)
{
    m_line.Draw();
    return TRUE;
}

BOOL StatusTextWindow::UpdateData(BOOL)
{
    return TRUE;
}

CWnd* StatusTextWindow::SetFocus()
{
    return nullptr;
}

void StatusTextWindow::SetWindowTextA(LPCSTR text)
{
    m_line.SetText(text);
}

LRESULT StatusTextWindow::SendMessageA(UINT, WPARAM, LPARAM)
{
    return 0;
}

BOOL StatusTextWindow::RedrawWindow(const RECT*, CRgn*, UINT)
{
    m_line.Draw();
    return TRUE;
}

ProgressReport::ProgressReport(CJOBX& job, bool quiet) : m_job(job)
{
    if (quiet || !IsTerminal(stderr))
        return;
    m_job.m_pProgress = &m_bar;
    m_job.m_pStatus = &m_status;
    m_line.SetText("Reading the job");
    m_line.Draw();
}

ProgressReport::~ProgressReport()
{
    m_job.m_pProgress = nullptr;
    m_job.m_pStatus = nullptr;
}
