#include "job/InfoLines.h"

#include "job/CJOBXmisc.h"
#include "job/InfoFormat.h"
#include "saving/KeyedLines.h"

namespace
{
constexpr CSavedKey<CJOBXmisc> kSavedInfoKeys[] = {
    {info_format::kJobName, ListKey<&CJOBXmisc::m_sJobName>},
    {{}, [](const CJOBXmisc& misc, std::string_view, int, CRecordLines& lines) { ListUnits(misc.GetUnit(), lines); }},
    {info_format::kOdbVersionMajor, ListKey<&CJOBXmisc::m_nODBVersionMajor>},
    {info_format::kOdbVersionMinor, ListKey<&CJOBXmisc::m_nODBVersionMinor>},
    {info_format::kOdbSource, ListKey<&CJOBXmisc::m_sODBSource>},
    {info_format::kCreationDate, ListKey<&CJOBXmisc::m_sCreationDate>},
    {info_format::kSaveDate, ListKey<&CJOBXmisc::m_sSaveDate>},
    {info_format::kSaveApp, ListKey<&CJOBXmisc::m_sSaveApp>},
    {info_format::kSaveUser, ListKey<&CJOBXmisc::m_sSaveUser>},
};
} // namespace

// The file has no blocks of known names. Keys of others are read as "BLOCK.KEY".
void ListLines(const CJOBXmisc& misc, CRecordLines& lines)
{
    ListKeys(kSavedInfoKeys, misc, 0, lines);
    ListFurtherKeysAndBlocks(misc, lines);
}
