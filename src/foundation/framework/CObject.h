#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

class CArchive;
class CDumpContext;
class CObject;

// Information about a class at run time: name, size, schema and base.
// Ownership: instances are static and never deleted.
struct JOBX_API CRuntimeClass
{
    const LPCSTR m_lpszClassName = nullptr;          // of the class itself
    const int m_nObjectSize = 0;                     // sizeof of the class, in bytes
    const UINT m_wSchema = 0xFFFF;                   // 0xFFFF: not serialisable
    CObject* (*const m_pfnCreateObject)() = nullptr; // null if the class cannot be created by name
    CRuntimeClass* const m_pBaseClass = nullptr;     // null for CObject

    // A new object of the class, owned by the caller; null if the class cannot be created.
    CObject* CreateObject() const;
    // TRUE if the class is `base` or derives from it.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;
};

// The root of the framework's classes: run-time class, serialisation, diagnostics.
class JOBX_API CObject : public CRaisingNew
{
public:
    // The run-time class of the object, independent of the pointer's type.
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();
    // Stores the object into `archive` or loads it from there. The base class stores nothing.
    virtual void Serialize(CArchive& archive);
    // Checks the object's consistency. The base class checks nothing.
    virtual void AssertValid() const;
    // Prints the object for diagnosis. The base class prints nothing.
    virtual void Dump(CDumpContext& context) const;

    // TRUE if the class declares a schema for serialisation.
    BOOL IsSerializable() const;
    // TRUE if the object's class is `other` or derives from it.
    BOOL IsKindOf(const CRuntimeClass* other) const;
    static CRuntimeClass* GetThisClass();

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject(CObject&&) = default;
    CObject& operator=(const CObject&) = default;
    CObject& operator=(CObject&&) = default;
};
