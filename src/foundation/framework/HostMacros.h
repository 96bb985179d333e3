// The framework's macros for run-time classes and its text literals, for the sources of hosts that use them. Their
// names have no prefix of ours, so no other header includes this one: hosts that need them include it by name.
#pragma once

#include "foundation/framework/CObject.h"

#define _T(text) text // NOLINT(bugprone-reserved-identifier): the framework's own name

// The run-time class of a class: RUNTIME_CLASS(CFile).
#define RUNTIME_CLASS(name) (name::GetThisClass())
// `object` as a pointer to the class, null if it has another one.
#define DYNAMIC_DOWNCAST(name, object) (dynamic_cast<name*>(object))
#define STATIC_DOWNCAST(name, object) (static_cast<name*>(object))

// In the class: gives it a name at run time. What follows is public.
#define DECLARE_DYNAMIC(name)                                                                                          \
public:                                                                                                                \
    static CRuntimeClass* GetThisClass();                                                                              \
    CRuntimeClass* GetRuntimeClass() const override;

// Like DECLARE_DYNAMIC; the run-time class can also create objects with the default constructor.
#define DECLARE_DYNCREATE(name)                                                                                        \
    DECLARE_DYNAMIC(name)                                                                                              \
    static CObject* CreateObject();

// Like DECLARE_DYNCREATE; the class also has a schema number, so IsSerializable returns TRUE.
#define DECLARE_SERIAL(name) DECLARE_DYNCREATE(name)

// In one source file, with the class and its base.
#define IMPLEMENT_DYNAMIC(name, base) JOBX_IMPLEMENT_CLASS(name, base, 0xFFFF, nullptr)
#define IMPLEMENT_DYNCREATE(name, base) JOBX_IMPLEMENT_CREATE(name, base, 0xFFFF)
#define IMPLEMENT_SERIAL(name, base, schema) JOBX_IMPLEMENT_CREATE(name, base, schema)

#define JOBX_IMPLEMENT_CREATE(name, base, schema)                                                                      \
    CObject* name::CreateObject()                                                                                      \
    {                                                                                                                  \
        return new name;                                                                                               \
    }                                                                                                                  \
    JOBX_IMPLEMENT_CLASS(name, base, schema, &name::CreateObject)

#define JOBX_IMPLEMENT_CLASS(name, base, schema, create)                                                               \
    CRuntimeClass* name::GetThisClass()                                                                                \
    {                                                                                                                  \
        static CRuntimeClass theClass{#name, static_cast<int>(sizeof(name)), schema, create, base::GetThisClass()};    \
        return &theClass;                                                                                              \
    }                                                                                                                  \
    CRuntimeClass* name::GetRuntimeClass() const                                                                       \
    {                                                                                                                  \
        return GetThisClass();                                                                                         \
    }
