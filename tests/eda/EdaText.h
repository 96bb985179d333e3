// EDA data from texts and as texts, for the tests.
#pragma once

#include "eda/CJOBXdata.h"
#include "eda/CJOBXdataPkgObjContour.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

// What the reader makes of a file with exactly these bytes; fails the test when the file is not read.
std::unique_ptr<CJOBXdata> ReadEda(std::string_view bytes);

// The file that is written for the data.
std::string WrittenFile(const CJOBXdata& data);

// Every member that a reader can fill, one line a record, indented below its owner.
std::string Describe(const CJOBXdata& data);
std::string Describe(const CJOBXdataPkgObjArray& outlines);

// What the reader makes of the text, described.
inline std::string Described(std::string_view bytes)
{
    return Describe(*ReadEda(bytes));
}

// A C stream that collects what is printed.
class Print
{
public:
    Print();
    ~Print();
    Print(const Print&) = delete;
    Print& operator=(const Print&) = delete;

    std::FILE* File() const { return m_file; }
    std::string Text() const;

private:
    std::FILE* m_file;
};

// What a record or list prints about itself.
template <class Record>
std::string Printed(const Record& record)
{
    const Print print;
    record.WriteODBData(print.File());
    return print.Text();
}

// A new record at the end of the list.
template <class T>
T& AddTo(COwningPtrArray<T>& list)
{
    return *list.Own(std::make_unique<T>());
}

// A plain outline record with blank-separated parameters, as the reader makes it.
CJOBXdataPkgObj& AddOutline(CJOBXdataPkgObjArray& outlines, std::string_view text, int lineNumber = 0);
