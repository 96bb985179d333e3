#include "job/CJOBXmisc.h"
#include "job/InfoFormat.h"
#include "job/InfoReader.h"
#include "reading/CKeyLines.h"
#include "reading/InfoMessageKinds.h"

namespace
{
constexpr CKeyKinds kInfoKinds{info_message::kNotNumber, info_message::kNotKey, info_message::kUnknown,
                               info_message::kTwice,     info_message::kNotKey, info_message::kNotKey};

constexpr CKey<CJOBXmisc> kInfoKeys[] = {
    {info_format::kJobName, StoreKey<&CJOBXmisc::m_sJobName>},
    {info_format::kOdbVersionMajor, StoreKey<&CJOBXmisc::m_nODBVersionMajor>},
    {info_format::kOdbVersionMinor, StoreKey<&CJOBXmisc::m_nODBVersionMinor>},
    {info_format::kOdbSource, StoreKey<&CJOBXmisc::m_sODBSource>},
    {info_format::kCreationDate, StoreKey<&CJOBXmisc::m_sCreationDate>},
    {info_format::kSaveDate, StoreKey<&CJOBXmisc::m_sSaveDate>},
    {info_format::kSaveApp, StoreKey<&CJOBXmisc::m_sSaveApp>},
    {info_format::kSaveUser, StoreKey<&CJOBXmisc::m_sSaveUser>},
    {info_format::kMaxUid, nullptr},
};
} // namespace

void ReadCompletely(const CReadingContext& /*context*/, CSourceFile& file, CJOBXmisc& misc)
{
    CFileUnit unit(file.Messages(), misc, JOBXunit::Inch);
    if (!file.WasRead())
        return;
    CKeyLines lines(file, kInfoKinds, &unit);
    lines.ReadBlocks(
        misc, [] { return false; }, [] {}, [&] { lines.Store(kInfoKeys, misc); }); // no block is known
}
