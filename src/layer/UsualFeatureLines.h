// The lines that make up nearly all of a large features file, as they are usually written: read in one pass.
#pragma once

#include "foundation/CTextScanner.h"
#include "layer/FeatureCursors.h"

#include <string_view>

// Hands the line at `at` to `reading` when it looks like a line, pad, arc, segment or curve:
//     reading.template OnUsualFeature<LineFields>(fields, end, lineNumber)
//     reading.template OnUsualElement<SegmentFields>(fields, lineNumber)
// which answer where the next line begins, or null when they take nothing. Elements come only while
// reading.TakesSegments() or reading.TakesCurves() is true.
template <class Reading>
const char* ReadUsualLine(Reading& reading, const char* at, const char* end, int lineNumber)
{
    if (end - at < 3)
        return nullptr;
    if (at[1] == ' ')
        switch (at[0])
        {
        case features_format::kLine:
            return reading.template OnUsualFeature<LineFields>({at + 2, end}, end, lineNumber);
        case features_format::kPad:
            return reading.template OnUsualFeature<PadFields>({at + 2, end}, end, lineNumber);
        case features_format::kArc:
            return reading.template OnUsualFeature<ArcFields>({at + 2, end}, end, lineNumber);
        default:
            return nullptr;
        }
    if (at[0] != features_format::kContour || at[2] != ' ')
        return nullptr;
    if (at[1] == features_format::kSegment)
        return reading.TakesSegments()
                   ? reading.template OnUsualElement<SegmentFields>(CStrictFields(at + 3, end), lineNumber)
                   : nullptr;
    return at[1] == features_format::kCurve && reading.TakesCurves()
               ? reading.template OnUsualElement<CurveFields>(CStrictFields(at + 3, end), lineNumber)
               : nullptr;
}

// Goes through the usual lines ahead; stops at the first one that was not taken.
template <class Reading>
void ReadUsualLines(Reading& reading, CTextScanner& scanner)
{
    const std::string_view ahead = scanner.Ahead();
    const char* const end = ahead.data() + ahead.size();
    const int first = scanner.NumberAhead();
    const char* at = ahead.data();
    int lines = 0;
    while (const char* const next = ReadUsualLine(reading, at, end, first + lines))
    {
        at = next;
        ++lines;
    }
    scanner.Took(at, lines);
}
