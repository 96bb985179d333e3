// The messages about the files of a job while several of them are read.
#pragma once

#include "reading/CFileMessages.h"

#include <functional>
#include <list>
#include <map>
#include <string>

// The messages of several files, in the order in which the files were first mentioned.
// Ownership: owns the messages of its files; references to them are valid until Deliver or Append takes them.
// Threads:   threads that read at once have a list each.
class CMessageList
{
public:
    explicit CMessageList(const CJOBXreading& reading) : m_reading(&reading) {}

    // The messages of the file at that path below the job, so that all of one file are counted together.
    CFileMessages& Of(const std::string& file);
    // Moves everything from the other list to the end of this one. A file may be in only one of the two.
    void Append(CMessageList& other);
    // Passes everything to the sink, file by file, and empties the list.
    void Deliver();

private:
    const CJOBXreading* m_reading;
    std::list<CFileMessages> m_files;
    std::map<std::string, CFileMessages*, std::less<>> m_byName;
};
