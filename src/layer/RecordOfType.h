// A feature record as the class that its type text stands for.
#pragma once

#include "layer/CJOBXlayObj.h"

#include <typeinfo>

// `record` as a T, null when it is another class; almost every record is exactly a T, which is told without a search.
template <class T, class Record>
auto* RecordOfType(Record* record)
{
    using Result = std::conditional_t<std::is_const_v<Record>, const T, T>;
    return typeid(*record) == typeid(T) ? static_cast<Result*>(record) : dynamic_cast<Result*>(record);
}
