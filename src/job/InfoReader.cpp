#include "foundation/KeywordTable.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBXmisc.h"
#include "job/InfoFormat.h"

namespace
{
template <CString CJOBXmisc::*member>
void OnText(CJOBXmisc& misc, std::string_view line)
{
    misc.*member = KeyValue(line);
}

template <int CJOBXmisc::*member>
void OnInteger(CJOBXmisc& misc, std::string_view line)
{
    misc.*member = ParseInteger(KeyValue(line));
}

// Tried from the top, first match wins. The order is behaviour: do not sort it. All other lines are dropped, including
// the end marks of other files ("ECHAR").
constexpr Keyword<CJOBXmisc> kInfoKeywords[] = {
    {info_format::kJobName, OnText<&CJOBXmisc::m_sJobName>},
    {info_format::kOdbVersionMajor, OnInteger<&CJOBXmisc::m_nODBVersionMajor>},
    {info_format::kOdbVersionMinor, OnInteger<&CJOBXmisc::m_nODBVersionMinor>},
    {info_format::kOdbSource, OnText<&CJOBXmisc::m_sODBSource>},
    {info_format::kCreationDate, OnText<&CJOBXmisc::m_sCreationDate>},
    {info_format::kSaveDate, OnText<&CJOBXmisc::m_sSaveDate>, Letters::AsWritten}, // upper case only; intended
    {info_format::kSaveApp, OnText<&CJOBXmisc::m_sSaveApp>},
    {info_format::kSaveUser, OnText<&CJOBXmisc::m_sSaveUser>},
};
} // namespace

int CJOBXmisc::ParseODBOfMFC(const CString& miscDirectory)
{
    CKUtility& utility = *CKUtility::GetInstance();
    const CString path = utility.FindPath(miscDirectory, info_format::kInfo, __FILE__, __LINE__);
    if (!utility.DoesFileExist(path, __FILE__, __LINE__))
        return 0; // many jobs have none, so do not report it
    return Guarded(
        [&]
        {
            CLineScanner text(path, __FILE__, __LINE__);
            while (text.NextLine())
                Dispatch<kInfoKeywords>(*this, text.Line());
            return text.WasRead() ? 1 : 0;
        });
}
