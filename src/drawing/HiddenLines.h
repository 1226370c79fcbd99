#pragma once

#include "drawing/SamplePart.h"
#include "drawing/ViewCamera.h"
#include "drawing/ViewLine.h"

#include <map>

/// Projects the objects `shown` of a part, cuts them where the camera's box begins, and tells visible edges
/// from hidden ones. Edges that lie upon each other are given once: the visible one, the nearer one. Bodies
/// may pierce each other.
ViewLines linesOf(const SamplePart& part, const std::vector<int>& shown, const ViewCamera& camera);

/// What cameras see of one part, remembered for who asks again: most changes of records leave it as it is.
class SeenLines {
public:
    /// As `linesOf`, of the same part at each call. Valid until the next question.
    const ViewLines& of(const SamplePart& part, const std::vector<int>& shown, const ViewCamera& camera);
    /// How often that was not known, and was projected.
    int projections() const { return m_projections; }

private:
    std::map<std::string, ViewLines> m_known; // by the bytes of what was asked
    std::size_t m_lines = 0;
    int m_projections = 0;
};
