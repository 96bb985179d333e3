#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "job/CJOBXmisc.h"

// The fields of CJOBXmisc.
template <>
struct jobx::Fields<CJOBXmisc>
{
    static constexpr RecordName kName{"misc", "What the job says of itself", "info", "info"};
    static constexpr auto kList = std::tuple{
        Integer("versionMajor", "", &CJOBXmisc::m_nODBVersionMajor).Shown("version major"),
        Integer("versionMinor", "", &CJOBXmisc::m_nODBVersionMinor).Shown("version minor"),
        Text("jobName", "Name", &CJOBXmisc::m_sJobName).Shown("job name"),
        Text("source", "Tool the job came from", &CJOBXmisc::m_sODBSource).Shown("source"),
        Text("creationDate", "As in the file", &CJOBXmisc::m_sCreationDate).Shown("creation date"),
        Text("saveDate", "As in the file", &CJOBXmisc::m_sSaveDate).Shown("save date"),
        Text("saveApp", "Program that saved it", &CJOBXmisc::m_sSaveApp).Shown("save application"),
        Text("saveUser", "Who saved it", &CJOBXmisc::m_sSaveUser).Shown("save user"),
        UnitOf(),
        AttributeListOf(),
        FurtherKeysOf(),
    };
};
