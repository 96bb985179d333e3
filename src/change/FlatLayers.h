// The layers of a step that takes copies of other steps.
#pragma once

#include "change/CMergedTables.h"
#include "change/FlippedLayers.h"
#include "change/StepPlacements.h"
#include "change/SymbolNames.h"

#include <map>
#include <optional>
#include <string>

class CJOBX;
class CJOBXattributed;
class CJOBXlayer;
class CJOBXtool;

// One copy of a step as it is added.
struct CStepCopy
{
    const CPlacedStep& placed;
    const CFlippedLayers& flipped;

    const CJOBXstepObj& Step() const noexcept { return *placed.step; }
    // The layer to which a layer of the step goes, in lower case; nothing if it has no counterpart on the other side.
    std::optional<std::string> Target(std::string_view layer) const;
    // The name of a net or component.
    CString Named(const CString& name) const;
};

// What all parts of the flattening share.
struct CFlattening
{
    CFlattening(const CJOBX& owner, CJOBXstepObj& step);

    CPlacedFile FileOf(const CStepCopy& copy, JOBXunit from, JOBXunit to) const
    {
        return {copy.placed.placement, unit, from, to};
    }

    const CJOBX& job;
    CJOBXstepObj& root;
    JOBXunit unit; // of the root's header, and of files that it did not have
    CSymbolNames symbols;
    CLengthAttributes lengths;
};

class CFlatLayers
{
public:
    explicit CFlatLayers(CFlattening& flattening);

    // The layer that a layer of the copied step went to, as the root spells it, and the index of its first feature there.
    struct Start
    {
        CString name;
        __int64 features = 0;
    };
    using Starts = std::map<std::string, Start>; // by the layer of the step, in lower case

    Starts Add(const CStepCopy& copy);

private:
    struct Target
    {
        Target(CJOBXlayer& owner, const CLengthAttributes& lengths);

        CJOBXlayer& layer;
        CMergedTables attributes;
        std::map<std::string, int> symbols; // the numbers by name and unit letter
        int nextSymbol = 0;
    };

    Target& TargetFor(const std::string& name, const CStepCopy& copy);
    CJOBXlayer& NewLayer(const std::string& name, const CStepCopy& copy);
    void AddFeatures(const CJOBXlayer& from, const CPlacedFile& file, Target& target);
    std::map<int, int> AddSymbols(const CJOBXlayer& from, const CPlacedFile& file, Target& target) const;
    void AddTools(const CJOBXtool& from, CJOBXtool& to) const;

    CFlattening& m_flattening;
    std::map<std::string, Target> m_targets; // by name in lower case
};

// Names in lower case.
std::string LowerName(std::string_view name);

// Copies the attribute list of a folder, if it has one.
void CopyAttributeList(const CJOBXattributed& from, CJOBXattributed& to);
