// The lines that make up nearly all of a large features file, in the form in which most programs write them: read in one
// pass, for both ways of reading.
#pragma once

#include "foundation/CLineScanner.h"
#include "layer/FeatureBuilder.h"
#include "layer/FeatureCursors.h"

#include <string_view>

// The base of a reader of features, `Reading`. It takes a line, pad, arc, segment or curve whose fields are plain, and
// leaves any other line to the reader. What it adds for a line is what the reader would add. The reader has
//     bool Accepts(const Record& record, const char* end)   whether nothing is wrong with the fields, which end there
//     bool TakesSegments(), bool TakesCurves()              whether the elements belong to something
//     bool FindProperties(std::string_view list, const CJOBXPropertyArray*& properties)
//                                                           of an attribute list without blanks; false to leave the line
//     bool TakeTail(CPlainFields& fields, __int64& id)      what follows the ";" behind the list; false likewise
//     bool kKeepsLines                                      whether features know their lines
template <class Reading>
class CPlainFeatureLines
{
protected:
    explicit CPlainFeatureLines(CJOBXlayer& layer) : m_builder(layer) {}

    // Goes through the plain lines ahead; stops at the first that was not taken.
    void ReadPlainLines(CLineScanner& scanner)
    {
        m_lastList = {}; // may point into a piece of the file that is gone
        ReadLinesAhead(scanner, [this](const char* at, const char* end, int lineNumber)
                       { return ReadPlainLine(at, end, lineNumber); });
    }

    CFeatureBuilder m_builder; // of the reader as well

private:
    Reading& Reader() noexcept { return static_cast<Reading&>(*this); }

    // Where the next line begins; null if the line was not taken. A LF ends the line, so whatever is behind another
    // character may be looked at.
    const char* ReadPlainLine(const char* at, const char* end, int lineNumber)
    {
        switch (at[0])
        {
        case features_format::kLine:
            return at[1] == ' ' ? OnPlainFeature<LineFields>({at + 2, end}, lineNumber) : nullptr;
        case features_format::kPad:
            return at[1] == ' ' ? OnPlainFeature<PadFields>({at + 2, end}, lineNumber) : nullptr;
        case features_format::kArc:
            return at[1] == ' ' ? OnPlainFeature<ArcFields>({at + 2, end}, lineNumber) : nullptr;
        case features_format::kContour:
            return OnPlainContourLine(at, end, lineNumber);
        default:
            return nullptr;
        }
    }
    const char* OnPlainContourLine(const char* at, const char* end, int lineNumber)
    {
        if (at[1] == features_format::kSegment && at[2] == ' ' && Reader().TakesSegments())
            return OnPlainElement<SegmentFields>({at + 3, end}, lineNumber);
        if (at[1] == features_format::kCurve && at[2] == ' ' && Reader().TakesCurves())
            return OnPlainElement<CurveFields>({at + 3, end}, lineNumber);
        return nullptr;
    }

    template <class Record>
    const char* OnPlainFeature(CPlainFields fields, [[maybe_unused]] int lineNumber)
    {
        Record record;
        if (!Take(fields, record) || !Reader().Accepts(record, fields.At()))
            return nullptr;
        const CJOBXPropertyArray* properties = nullptr;
        __int64 id = CJOBXidentified::kNoID;
        fields.SkipBlanks();
        if (fields.Is(features_format::kAttributes) && !TakeAttributes(fields, properties, id))
            return nullptr;
        if (!fields.LineEnd())
            return nullptr;
        CJOBXlayObj& feature = m_builder.AddFeature(record, properties);
        if (id != CJOBXidentified::kNoID)
            feature.SetID(id);
        if constexpr (Reading::kKeepsLines)
            feature.SetSourceLine(lineNumber);
        return fields.At();
    }
    template <class Record>
    const char* OnPlainElement(CPlainFields fields, int lineNumber)
    {
        Record record;
        if (!Take(fields, record))
            return nullptr;
        fields.SkipBlanks();
        if (!fields.LineEnd())
            return nullptr;
        m_builder.AddElement(record, lineNumber);
        return fields.At();
    }

    // What is behind the first ";". Most features have the attributes of the one before.
    bool TakeAttributes(CPlainFields& fields, const CJOBXPropertyArray*& properties, __int64& id)
    {
        if (m_lastList.empty() || !fields.TakeList(m_lastList))
        {
            m_lastList = fields.List();
            if (!Reader().FindProperties(m_lastList, m_lastProperties))
            {
                m_lastList = {};
                return false;
            }
        }
        properties = m_lastProperties;
        fields.SkipBlanks();
        return !fields.Is(features_format::kAttributes) || Reader().TakeTail(fields, id);
    }

    std::string_view m_lastList; // of the feature before, in the text; empty if unknown
    const CJOBXPropertyArray* m_lastProperties = nullptr;
};
