#include "job/CJOBXmisc.h"

#include "foundation/KeywordTable.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"

namespace
{
template <CString CJOBXmisc::*member>
void TakeText(CJOBXmisc& misc, std::string_view line)
{
    misc.*member = KeyValue(line);
}

template <int CJOBXmisc::*member>
void TakeInteger(CJOBXmisc& misc, std::string_view line)
{
    misc.*member = ParseInteger(KeyValue(line));
}

// Tried from the top, the first match wins. The order is behaviour: do not sort it. Lines that none takes are dropped,
// the end marks of other files ("ECHAR") among them.
constexpr Keyword<CJOBXmisc> kKeywords[] = {
    {"JOB_NAME", TakeText<&CJOBXmisc::m_sJobName>},
    {"ODB_VERSION_MAJOR", TakeInteger<&CJOBXmisc::m_nODBVersionMajor>},
    {"ODB_VERSION_MINOR", TakeInteger<&CJOBXmisc::m_nODBVersionMinor>},
    {"ODB_SOURCE", TakeText<&CJOBXmisc::m_sODBSource>},
    {"CREATION_DATE", TakeText<&CJOBXmisc::m_sCreationDate>},
    {"SAVE_DATE", TakeText<&CJOBXmisc::m_sSaveDate>, Letters::AsWritten}, // in upper case only: intended
    {"SAVE_APP", TakeText<&CJOBXmisc::m_sSaveApp>},
    {"SAVE_USER", TakeText<&CJOBXmisc::m_sSaveUser>},
};
} // namespace

CJOBXmisc::CJOBXmisc() = default;

CJOBXmisc::~CJOBXmisc() = default;

int CJOBXmisc::ParseODBOfMFC(const CString& miscDirectory)
{
    CKUtility& utility = *CKUtility::GetInstance();
    const CString path = utility.FindPath(miscDirectory, "info", __FILE__, __LINE__);
    if (!utility.DoesFileExist(path, __FILE__, __LINE__))
        return 0; // many jobs have none: nothing to report
    return Guarded(
        [&]
        {
            CTextScanner text(path, __FILE__, __LINE__);
            while (text.NextLine())
                Dispatch<kKeywords>(*this, text.Line());
            return text.WasRead() ? 1 : 0;
        });
}
