#pragma once

#include "drawing/PartStatement.h"
#include "drawing/SamplePart.h"

/// Builds a sample part from the statements of its file.
class PartReader {
public:
    /// Takes a statement. Returns what is wrong with it, or nothing.
    std::string take(PartStatement& statement);
    /// Makes the solids, once all statements were taken: cuts and holes come after what they are in. Returns
    /// what is wrong, and in `line` the number of the statement, counted from 0.
    std::string finish(std::size_t& line);

    SamplePart part;

private:
    /// How an object gets its body.
    struct Plan {
        std::size_t statement = 0;
        Outline outline;
        Frame frame; ///< of the outline: x and y in it, z along the prism
        double length = 0;
        double slopeFrom = 0;
        double slopeTo = 0;
        double reach = 30; ///< of a hole
        double slot = 0;
        Vec3 along;
        bool atEnd = false; ///< of a cut
        bool below = false;
        double depth = 0;
    };

    void takeHeader(PartStatement& statement);
    void takeObject(PartStatement& statement, eObjectType type);
    void describe(PartStatement& statement, PartObject& object) const;
    void shapeProfile(PartStatement& statement, PartObject& object, Plan& plan) const;
    void shapePlate(PartStatement& statement, PartObject& object, Plan& plan) const;
    void shapeRound(PartStatement& statement, PartObject& object, Plan& plan) const;
    void shapeCut(PartStatement& statement, PartObject& object, Plan& plan) const;
    void shapeLines(PartStatement& statement, PartObject& object, Plan& plan) const;
    void addCopies(PartStatement& statement, const PartObject& object, const Plan& plan);
    void build(PartObject& object, const Plan& plan);
    std::string cutInto(std::size_t number);
    std::string drillInto(PartObject& hole, const Plan& plan);

    std::vector<Plan> m_plans;                    // one per object
    std::vector<std::vector<std::size_t>> m_cuts; // per object, the cuts in it
    std::size_t m_statement = 0;
};
