// Arrays of pointers: whatever fails, every record stands in exactly one place.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"

#include <array>
#include <map>

namespace
{
constexpr int kRecords = 20;

template <class T>
using Array = CExPtrArray<T*, T*>;

// LooseRecords that no array deletes, whatever becomes of it.
template <class T>
class LooseRecords
{
public:
    LooseRecords()
    {
        for (auto& record : m_records)
            record = std::make_unique<T>();
    }
    T* operator[](int i) const { return m_records[static_cast<std::size_t>(i)].get(); }
    // Appends those from `first` to before `end`.
    void AddTo(Array<T>& array, int first, int end) const
    {
        for (int i = first; i < end; ++i)
            array.Add((*this)[i]);
    }
    // Whether the array holds exactly those, in order.
    bool AreIn(const Array<T>& array, int first, int end) const
    {
        bool same = array.GetSize() == end - first;
        for (int i = first; same && i < end; ++i)
            same = array.GetAt(i - first) == (*this)[i];
        return same;
    }

private:
    std::array<std::unique_ptr<T>, kRecords> m_records;
};

// An operation that grows an array of four records; a failure leaves the four.
template <class T, class Grow>
MemoryOperation Growing(const char* name, Grow grow)
{
    return {"CExPtrArray", name,
            [grow](MemoryRun& run)
            {
                const LooseRecords<T> records;
                Array<T> array;
                records.AddTo(array, 0, 4);
                array.FreeExtra();
                const Array<T>& constant = array;
                const bool done = run.Try([&] { grow(array, records[4]); });
                EXPECT_TRUE(done ? constant.Exists(records[4]) && array.GetSize() > 4 : records.AreIn(array, 0, 4));
            }};
}

template <class T>
MemoryOperation Moving()
{
    return {"CExPtrArray", "MoveElementTo",
            [](MemoryRun& run)
            {
                const LooseRecords<T> records;
                Array<T> source;
                Array<T> target;
                records.AddTo(source, 4, 10);
                records.AddTo(target, 0, 4);
                target.FreeExtra();
                const bool done = run.Try([&] { source.MoveElementTo(target, 0, 5); });
                EXPECT_TRUE(records.AreIn(target, 0, done ? 10 : 4));
                EXPECT_TRUE(records.AreIn(source, 4, done ? 4 : 10));
            }};
}

template <class T>
MemoryOperation RemovingDuplicates()
{
    return {"CExPtrArray", "RemoveDuplicatedElements",
            [](MemoryRun& run)
            {
                const LooseRecords<T> records;
                Array<T> array;
                records.AddTo(array, 0, 7);
                records.AddTo(array, 3, kRecords);
                records.AddTo(array, 0, kRecords);
                EXPECT_TRUE(run.Try([&] { array.RemoveDuplicatedElements(); }));
                EXPECT_TRUE(records.AreIn(array, 0, kRecords));
            },
            Memory::Useful};
}

template <class T>
MemoryOperation Subtracting()
{
    return {"CExPtrArray", "Subtract",
            [](MemoryRun& run)
            {
                const LooseRecords<T> records;
                Array<T> array;
                records.AddTo(array, 0, 12);
                records.AddTo(array, 5, kRecords);
                Array<T> other;
                records.AddTo(other, 5, 12);
                records.AddTo(other, 0, 5);
                EXPECT_TRUE(run.Try([&] { array.Subtract(other); }));
                EXPECT_TRUE(records.AreIn(array, 5, kRecords));
            },
            Memory::Useful};
}

template <class T>
MemoryOperation WithoutMemory()
{
    return {"CExPtrArray", "what needs no memory",
            [](MemoryRun& run)
            {
                const LooseRecords<T> records;
                Array<T> array;
                records.AddTo(array, 0, 6);
                EXPECT_TRUE(run.Try(
                    [&]
                    {
                        array.Remove(records[2]);
                        array.SetAt(0, nullptr);
                        array.RemoveNullElement();
                        array.Reverse();
                        array.RemoveLastElement();
                        array.RemoveAt(0);
                    }));
                ASSERT_EQ(array.GetSize(), 2);
                EXPECT_EQ(array.GetAt(0), records[4]);
                EXPECT_EQ(array.GetAt(1), records[3]);
                array.RemoveAll();
            },
            Memory::NotNeeded};
}

template <class T>
void AddArray(MemoryOperations& all)
{
    all.push_back(Growing<T>("Add", [](Array<T>& array, T* record) { array.Add(record); }));
    all.push_back(Growing<T>("Add_if_only_do_not_exists",
                             [](Array<T>& array, T* record) { array.Add_if_only_do_not_exists(record); }));
    all.push_back(Growing<T>("InsertAt", [](Array<T>& array, T* record) { array.InsertAt(2, record); }));
    all.push_back(Growing<T>("SetAtGrow", [](Array<T>& array, T* record) { array.SetAtGrow(9, record); }));
    all.push_back(Growing<T>("SetSize",
                             [](Array<T>& array, T* record)
                             {
                                 array.SetSize(30);
                                 array.SetAt(29, record);
                             }));
    all.push_back(Growing<T>("Reserve",
                             [](Array<T>& array, T* record)
                             {
                                 array.Reserve(40);
                                 array.Add(record);
                             }));
    all.push_back(Moving<T>());
    all.push_back(RemovingDuplicates<T>());
    all.push_back(Subtracting<T>());
    all.push_back(WithoutMemory<T>());
    all.push_back({"CArray", "Copy and Append",
                   [](MemoryRun& run)
                   {
                       const LooseRecords<T> records;
                       Array<T> source;
                       records.AddTo(source, 4, 10);
                       Array<T> target;
                       records.AddTo(target, 0, 4);
                       target.FreeExtra();
                       const bool done = run.Try([&] { target.Append(source); });
                       EXPECT_TRUE(records.AreIn(target, 0, done ? 10 : 4));
                       EXPECT_TRUE(records.AreIn(source, 4, 10));
                   }});
}

template <class... T>
MemoryOperations Arrays()
{
    MemoryOperations all;
    (AddArray<T>(all), ...);
    return all;
}
} // namespace

MemoryOperations PointerArrayOperations()
{
    return Arrays<CArrayN, CArrayPointD, CArrayPointN, CLProperty, CPoint3D, CRectD, CJOBXProperty, CJOBXSnt, CJOBXcmp,
                  CJOBXdataNet, CJOBXdataPkgObj, CJOBXlayObj, CJOBXlayObjOX, CJOBXlayer, CJOBXmatrixLayer, CJOBXnet,
                  CJOBXnetPt, CJOBXstepRepeat, CODBlayObj, CODBlayer, CODBnet>();
}
