// Runs a piece of a test in another current directory; the old one comes back after it.
#pragma once

#include <filesystem>
#include <string>

// Threads: changes the whole process; make one only while no other thread runs.
class CurrentDir
{
public:
    explicit CurrentDir(const std::string& path) : m_old(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ~CurrentDir()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_old, ignored);
    }
    CurrentDir(const CurrentDir&) = delete;
    CurrentDir& operator=(const CurrentDir&) = delete;

private:
    std::filesystem::path m_old;
};
