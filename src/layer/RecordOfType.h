// Casts a feature record to the class that its type text means.
#pragma once

#include "layer/CJOBXlayObj.h"

#include <typeinfo>

// `record` as a T, null if it has another class. Almost every record is exactly a T, and comparing the type is faster
// than a cast.
template <class T, class Record>
auto* RecordOfType(Record* record)
{
    using Result = std::conditional_t<std::is_const_v<Record>, const T, T>;
    return typeid(*record) == typeid(T) ? static_cast<Result*>(record) : dynamic_cast<Result*>(record);
}
