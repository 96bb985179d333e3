#include "reading/CMessageList.h"

#include <utility>

CFileMessages& CMessageList::Of(const std::string& file)
{
    const auto found = m_byName.find(file);
    if (found != m_byName.end())
        return *found->second;
    CFileMessages& messages = m_files.emplace_back(*m_reading, file);
    m_byName.emplace(file, &messages);
    return messages;
}

void CMessageList::Append(CMessageList& other)
{
    m_files.splice(m_files.end(), other.m_files);
    m_byName.merge(other.m_byName);
}

void CMessageList::Deliver()
{
    m_byName.clear();
    std::list<CFileMessages> files = std::exchange(m_files, {}); // a sink may raise
    for (CFileMessages& messages : files)
        messages.Deliver();
}
