// The layers that lie on the other side.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class CJOBXmatrix;
class CJOBXmatrixLayer;

// Which layer each layer becomes when the board is turned over. Copper layers are exchanged in the order of the matrix,
// and so are dielectrics between them; a layer outside the copper with the one of its type that is as far from the copper
// on the other side. Drill and rout layers belong to the one of their type with the span turned over, and to themselves
// if that is their own or empty. The components of both sides are exchanged, whatever the matrix has. Documents, layers of the context MISC, and those that the matrix does not have stay.
class CFlippedLayers
{
public:
    explicit CFlippedLayers(const CJOBXmatrix& matrix);

    // The name in lower case; nothing if the layer has no counterpart.
    std::optional<std::string> Of(std::string_view name) const;

private:
    struct Row
    {
        std::string name; // in lower case, like the others
        std::string type;
        std::string start;
        std::string end;
    };

    static std::string Lower(std::string_view text);
    void PairAll(const std::vector<Row>& board);
    void Pair(const std::vector<std::string>& one, const std::vector<std::string>& other);
    void PairSpan(const Row& row, const std::vector<Row>& board);

    std::map<std::string, std::optional<std::string>> m_others; // nothing for one without a counterpart
};
