#include "eda/CJOBXSnt.h"

#include <algorithm>
#include <memory>

template class CExPtrArray<CJOBXSnt*, CJOBXSnt*>;

namespace
{
bool IsSame(const CJOBXSnt& subnet, const CString& kind, const CString& side, int component, int toeprint)
{
    return subnet.m_nComponentNumber == component && subnet.m_nToeprintNumber == toeprint && subnet.m_sKind == kind &&
           subnet.m_sSide == side;
}
} // namespace

CJOBXSnt::~CJOBXSnt() = default;

CJOBXSnt* CJOBXSnt::pGetSameODBSnt() const
{
    auto same = std::make_unique<CJOBXSnt>();
    same->m_nFlag = m_nFlag;
    same->m_nLineNumber = m_nLineNumber;
    same->m_dFillSize = m_dFillSize;
    same->m_sCutoutType = m_sCutoutType;
    same->m_sFillType = m_sFillType;
    same->m_nToeprintNumber = m_nToeprintNumber;
    same->m_nComponentNumber = m_nComponentNumber;
    same->m_sSide = m_sSide;
    same->m_sKind = m_sKind;
    same->m_ptPosition = m_ptPosition;
    same->m_sText = m_sText;
    for (const CJOBXdataNetObj& object : m_arrNetObjs.Records())
        same->m_arrNetObjs.Own(std::unique_ptr<CJOBXdataNetObj>(object.pGetSameODBdataNetObj()));
    return same.release();
}

CJOBXSntArray::~CJOBXSntArray() = default;

CJOBXSnt* CJOBXSntArray::pGetODBSntWithProperty(const CString& kind, const CString& side, int component,
                                                int toeprint) const
{
    for (CJOBXSnt& subnet : Records())
        if (IsSame(subnet, kind, side, component, toeprint))
            return &subnet;
    return nullptr;
}

int CJOBXSntArray::bCheckSameTopBeforeIndex(int index, const CJOBXSnt* snt) const
{
    if (snt == nullptr)
        return 0;
    const __int64 end = std::min<__int64>(index, GetSize());
    for (__int64 i = 0; i < end; ++i)
        if (const CJOBXSnt* const subnet = GetAt(i);
            subnet != nullptr &&
            IsSame(*subnet, snt->m_sKind, snt->m_sSide, snt->m_nComponentNumber, snt->m_nToeprintNumber))
            return 1;
    return 0;
}
