#include "foundation/framework/CObject.h"

CObject* CRuntimeClass::CreateObject() const
{
    return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const
{
    for (const CRuntimeClass* at = this; at != nullptr; at = at->m_pBaseClass)
        if (at == base)
            return TRUE;
    return FALSE;
}

CObject::~CObject() = default;

CRuntimeClass* CObject::GetThisClass()
{
    static CRuntimeClass theClass{"CObject", static_cast<int>(sizeof(CObject)), 0xFFFF, nullptr, nullptr};
    return &theClass;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return GetThisClass();
}

void CObject::Serialize(CArchive& /*archive*/) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& /*context*/) const {}

BOOL CObject::IsSerializable() const
{
    return GetRuntimeClass()->m_wSchema != 0xFFFF ? TRUE : FALSE;
}

BOOL CObject::IsKindOf(const CRuntimeClass* other) const
{
    return GetRuntimeClass()->IsDerivedFrom(other);
}
