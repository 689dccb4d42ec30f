// Where parameters are measured: the spots of their keys in `<TIpParamAndStore>`.
#pragma once

#include <span>
#include <unordered_map>
#include <vector>

class CQtParamInstance;

namespace paramdb::tools {

// Where a parameter is measured.
struct Spot {
    int mode; // a base mode
    int channel;
    int location;
    friend bool operator==(Spot const&, Spot const&) = default;
};

// A copy, which goes by the rows at the time when it was made. One pass over the table, however many
// parameters are asked for then.
class MeasuredSpots {
public:
    // Those of all parameters.
    explicit MeasuredSpots(CQtParamInstance const& parameters);
    // Those of one parameter, which takes less room.
    MeasuredSpots(CQtParamInstance const& parameters, int parameter);

    // The spots of a parameter in the order of keys, of equal ones that follow each other one; empty for -1
    // and for a parameter that is measured nowhere.
    std::span<Spot const> Of(int parameter) const;

private:
    std::unordered_map<int, std::vector<Spot>> m_spots;
};

} // namespace paramdb::tools
