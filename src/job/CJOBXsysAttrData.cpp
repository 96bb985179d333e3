#include "job/CJOBXsysAttrData.h"

template class CExPtrArray<CJOBXsysAttrData*, CJOBXsysAttrData*>;

CJOBXsysAttrData::CJOBXsysAttrData() = default;

CJOBXsysAttrData::~CJOBXsysAttrData() = default;

CString CJOBXsysAttrData::sGetOptionsFromIndexID(int index) const
{
    return index < m_arrOptions.GetSize() && !m_arrOptions.IsEmpty() ? m_arrOptions[index] : CString();
}

CJOBXsysAttrDataArray::CJOBXsysAttrDataArray() = default;

CJOBXsysAttrDataArray::~CJOBXsysAttrDataArray() = default;

CJOBXsysAttrData* CJOBXsysAttrDataArray::pGetODBsysAttrDataFromName(const CString& name) const
{
    for (CJOBXsysAttrData& definition : Records())
        if (definition.m_sName == name)
            return &definition;
    return nullptr;
}

CString CJOBXsysAttrDataArray::sGetOptionsFromOptionNameAndIndexID(const CString& name, int index) const
{
    const CJOBXsysAttrData* const named = pGetODBsysAttrDataFromName(name);
    const CJOBXsysAttrData* const definition = named != nullptr ? named : GetLastElement();
    return definition != nullptr ? definition->sGetOptionsFromIndexID(index) : CString();
}
