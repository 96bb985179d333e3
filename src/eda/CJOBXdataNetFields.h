#pragma once

#include "eda/CJOBXSntFields.h"
#include "eda/CJOBXdataNet.h"
#include "foundation/CJOBXPropertyFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXdataNet.
template <>
struct jobx::Fields<CJOBXdataNet>
{
    static constexpr RecordName kName{"net", "A net", "net", "net"};
    static constexpr auto kList = std::tuple{
        Integer("number", "Of the comment before the net, -1 for none", &CJOBXdataNet::m_nNumber).Shown("number", 2),
        Text("name", "Name", &CJOBXdataNet::m_sName).Shown("name", 1).AsName(),
        Integer("flag", "Set by hosts", &CJOBXdataNet::m_nFlag).InMemoryOnly(),
        Records("subnets", "", &CJOBXdataNet::m_arrSnts).Shown(3),
        Records("properties", "", &CJOBXdataNet::m_arrProperties).Shown(4),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
