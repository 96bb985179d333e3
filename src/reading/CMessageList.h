// What is said about the files of a job while several of them are read.
#pragma once

#include "reading/CFileMessages.h"

#include <functional>
#include <list>
#include <map>
#include <string>

// The messages of several files, in the order in which the files came up.
// Ownership: owns the messages of its files; references to them stay valid until Deliver or Append takes them.
// Threads:   threads that read at once have a list each.
class CMessageList
{
public:
    explicit CMessageList(const CJOBXreading& reading) : m_reading(&reading) {}

    // The messages of the file at that path below the job, so that all of one file count together.
    CFileMessages& Of(const std::string& file);
    // Moves everything from the other list behind what is here. A file may be in one of the two only.
    void Append(CMessageList& other);
    // Hands everything to the sink, file by file, and forgets it.
    void Deliver();

private:
    const CJOBXreading* m_reading;
    std::list<CFileMessages> m_files;
    std::map<std::string, CFileMessages*, std::less<>> m_byName;
};
