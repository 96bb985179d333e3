#include "saving/KeyedLines.h"

#include "foundation/CJOBXProperty.h"

namespace
{
// Blocks of names that are not known, as their keys come.
class CUnknownBlocks
{
public:
    explicit CUnknownBlocks(CRecordLines& lines) : m_lines(lines) {}

    void Enter(std::string_view block)
    {
        if (m_isOpen && m_block == block)
            return;
        Leave();
        m_lines.Begin(0, CRecordLines::kUnknownLine);
        m_lines.Word(block).Word("{").EndKey();
        m_block = block;
        m_isOpen = true;
    }
    void Leave()
    {
        if (!m_isOpen)
            return;
        m_lines.Begin(1, CRecordLines::kUnknownLine);
        m_lines.Word("}");
        m_isOpen = false;
    }

private:
    CRecordLines& m_lines;
    std::string_view m_block; // the open one
    bool m_isOpen = false;
};
} // namespace

void ListFurtherKeys(const CJOBXkeyed& object, int depth, CRecordLines& lines)
{
    if (const CJOBXPropertyArray* const keys = object.pGetFurtherKeys())
        for (const CJOBXProperty& key : keys->Records())
            lines.KeyValue(depth, key.m_sName.View(), key.m_sValue.View());
}

void ListFurtherKeysAndBlocks(const CJOBXkeyed& file, CRecordLines& lines)
{
    const CJOBXPropertyArray* const keys = file.pGetFurtherKeys();
    if (keys == nullptr)
        return;
    CUnknownBlocks blocks(lines);
    for (const CJOBXProperty& key : keys->Records())
    {
        const std::string_view name = key.m_sName.View();
        const std::size_t dot = name.find('.');
        if (dot == std::string_view::npos)
            blocks.Leave();
        else
            blocks.Enter(name.substr(0, dot));
        const bool isInBlock = dot != std::string_view::npos;
        lines.KeyValue(isInBlock ? 1 : 0, isInBlock ? name.substr(dot + 1) : name, key.m_sValue.View());
    }
    blocks.Leave();
}

void ListUnits(JOBXunit unit, CRecordLines& lines)
{
    lines.KeyValue(0, "UNITS", unit == JOBXunit::Millimetre ? "MM" : "INCH");
}
