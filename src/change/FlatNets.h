// The nets, packages and components of a step that takes copies of other steps.
#pragma once

#include "change/FlatLayers.h"
#include "eda/CJOBXdata.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

class CJOBXcmp;
class CJOBXcomponents;
class CJOBXnetlist;

class CFlatNets
{
public:
    explicit CFlatNets(CFlattening& flattening);

    // Adds what the step of the copy has, when its layers have been added.
    void Add(const CStepCopy& copy, const CFlatLayers::Starts& layers);

private:
    // Where a net of the copy went: its index, and how many subnets that net had before.
    struct NetPlace
    {
        int net = -1;
        int subnets = 0;
    };
    // A layer: its number in the root's LYR line, the index of the copy's first feature there, and how many the step has.
    struct LayerPlace
    {
        int number = -1;
        __int64 features = 0;
        __int64 count = 0;
    };
    // A components file, with what records that are added to it need.
    struct Side
    {
        Side(CJOBXcomponents& owner, const CLengthAttributes& lengths);

        CJOBXcomponents& file;
        CMergedTables attributes;
    };

    void PrepareData(const CJOBXdata& like);
    Side& SideFor(const std::string& name, const CStepCopy& copy);
    std::vector<int> AddPackages(const CJOBXdata& data, const CPlacedFile& file);
    void AddNets(const CStepCopy& copy, const CJOBXdata& data, const CPlacedFile& file,
                 const CFlatLayers::Starts& layers);
    void AddNet(const CStepCopy& copy, const CJOBXdataNet& net, const CPlacedFile& file);
    void PlaceSubnet(const CStepCopy& copy, CJOBXSnt& subnet, const CPlacedFile& file);
    void MoveFeatures(CJOBXdataNetObjArray& objects) const;
    void FindLayers(const CStepCopy& copy, const CJOBXdata& data, const CFlatLayers::Starts& layers);
    void AddComponents(const CStepCopy& copy);
    void AddComponent(const CStepCopy& copy, const CJOBXcmp& component, bool isBottom, const CPlacedFile& file,
                      Side& to);

    CFlattening& m_flattening;
    CJOBXdata& m_data;
    CMergedTables m_attributes; // of the data
    std::map<std::string, Side> m_sides;
    std::unordered_map<std::string, int> m_packages;              // of the root, by all that they say
    std::map<std::string, int> m_layerNumbers;                    // of the LYR line, by name in lower case
    int m_noNet = -1;                                             // the net of everything that is in no net
    std::map<const CJOBXstepObj*, std::vector<int>> m_packagesOf; // by index in the step
    std::map<const CJOBXstepObj*, bool> m_mirrorsFollow;          // whether mirror flags follow the side
    // Of the copy that is being added, by index in its step.
    std::vector<NetPlace> m_nets;
    std::vector<LayerPlace> m_layers; // of the LYR line
};

// Adds the points of the nets of a netlist to that of the root.
void AddNetlist(const CFlattening& flattening, const CStepCopy& copy, const CJOBXnetlist& from, CJOBXnetlist& to);
