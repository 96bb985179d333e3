#include "eda/CJOBXdataNetObj.h"

#include "eda/EdaFormat.h"

#include <memory>

template class CExPtrArray<CJOBXdataNetObj*, CJOBXdataNetObj*>;

CJOBXdataNetObj::~CJOBXdataNetObj() = default;

CJOBXdataNetObj* CJOBXdataNetObj::pGetSameODBdataNetObj() const
{
    auto same = std::make_unique<CJOBXdataNetObj>();
    same->m_nFeatureIndex = m_nFeatureIndex;
    same->m_nLayerIndex = m_nLayerIndex;
    same->m_nLineNumber = m_nLineNumber;
    same->m_sKind = m_sKind;
    return same.release();
}

CJOBXdataNetObjArray::~CJOBXdataNetObjArray() = default;

int CJOBXdataNetObjArray::nGetNumberOfHoles() const
{
    int holes = 0;
    for (const CJOBXdataNetObj& object : Records())
        if (object.m_sKind.View() == eda_format::kHole)
            ++holes;
    return holes;
}
