#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/FrameworkTypes.h"

class CArchive;
class CDumpContext;
class CObject;

// What the program knows of a class at run time: its name, size, schema and base.
// Ownership: instances are static and live as long as the program; nobody deletes them.
struct JOBX_API CRuntimeClass
{
    const LPCSTR m_lpszClassName = nullptr;          // the class's own name
    const int m_nObjectSize = 0;                     // sizeof of the class, in bytes
    const UINT m_wSchema = 0xFFFF;                   // 0xFFFF: not serialisable
    CObject* (*const m_pfnCreateObject)() = nullptr; // null for a class that cannot be created by name
    CRuntimeClass* const m_pBaseClass = nullptr;     // null for CObject

    // A new object of the class, owned by the caller; null when the class cannot be created.
    CObject* CreateObject() const;
    // TRUE when the class is `base` or derives from it.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;
};

// The root of the framework's classes: run-time class, serialisation, diagnostics.
class JOBX_API CObject : public CRaisingNew
{
public:
    // The run-time class of the object, whatever it is seen as.
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();
    // Stores the object into `archive` or loads it from there; the base has nothing to store.
    virtual void Serialize(CArchive& archive);
    // Checks the object's own consistency; nothing to check here.
    virtual void AssertValid() const;
    // Prints the object for diagnosis; nothing to print here.
    virtual void Dump(CDumpContext& context) const;

    // TRUE when the class declares a schema for serialisation.
    BOOL IsSerializable() const;
    // TRUE when the object's class is `other` or derives from it.
    BOOL IsKindOf(const CRuntimeClass* other) const;
    static CRuntimeClass* GetThisClass();

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject(CObject&&) = default;
    CObject& operator=(const CObject&) = default;
    CObject& operator=(CObject&&) = default;
};
