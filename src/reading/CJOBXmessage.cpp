#include "reading/CJOBXmessage.h"

#include "foundation/framework/AsciiText.h"
#include "reading/AttributeListMessageKinds.h"
#include "reading/AttributeMessageKinds.h"
#include "reading/CJOBXreading.h"
#include "reading/ComponentsMessageKinds.h"
#include "reading/DefinitionMessageKinds.h"
#include "reading/EdaMessageKinds.h"
#include "reading/FeatureMessageKinds.h"
#include "reading/FileMessageKinds.h"
#include "reading/FontMessageKinds.h"
#include "reading/InfoMessageKinds.h"
#include "reading/MatrixMessageKinds.h"
#include "reading/NetlistMessageKinds.h"
#include "reading/SavingMessageKinds.h"
#include "reading/StephdrMessageKinds.h"
#include "reading/ToolsMessageKinds.h"
#include "reading/UnitMessageKinds.h"

#include <iterator>
#include <span>

namespace
{
// The kinds by area, in the order of their codes.
constexpr std::span<const CJOBXmessageKind* const> kAreas[] = {
    attribute_list_message::kAll, attribute_message::kAll, components_message::kAll,
    definition_message::kAll,     eda_message::kAll,       feature_message::kAll,
    file_message::kAll,           font_message::kAll,      stephdr_message::kAll,
    info_message::kAll,           matrix_message::kAll,    netlist_message::kAll,
    saving_message::kAll,         tools_message::kAll,     unit_message::kAll};

CString WithoutControls(const CString& text)
{
    CString copy(text);
    for (int i = 0; i < copy.GetLength(); ++i)
        if (static_cast<unsigned char>(copy[i]) < ' ' || copy[i] == '\x7F')
            copy.SetAt(i, '?');
    return copy;
}
} // namespace

CJOBXmessageSink::~CJOBXmessageSink() = default;
CJOBXblockTaker::~CJOBXblockTaker() = default;
CJOBXgzipExpander::~CJOBXgzipExpander() = default;

const char* JOBXseverityName(JOBXseverity severity) noexcept
{
    constexpr const char* kNames[] = {"note", "warning", "error"};
    const auto index = static_cast<std::size_t>(severity);
    return index < std::size(kNames) ? kNames[index] : "";
}

CString CJOBXmessage::Line() const
{
    CString whole = WithoutControls(file);
    if (line != 0)
        whole.AppendFormat(":%d", line);
    whole += whole.IsEmpty() ? "" : ": ";
    if (kind != nullptr)
        whole = whole + JOBXseverityName(kind->severity) + " " + kind->code + " ";
    return whole + WithoutControls(text);
}

const CJOBXmessageKind* pGetJOBXmessageKind(int index) noexcept
{
    for (const auto& area : kAreas)
    {
        const int size = static_cast<int>(area.size());
        if (index >= 0 && index < size)
            return area[static_cast<std::size_t>(index)];
        index -= size;
    }
    return nullptr;
}

const CJOBXmessageKind* pGetJOBXmessageKindFromCode(const CString& code) noexcept
{
    for (int i = 0;; ++i)
    {
        const CJOBXmessageKind* const kind = pGetJOBXmessageKind(i);
        if (kind == nullptr || AsciiEqualNoCase(kind->code, code.View()))
            return kind;
    }
}
