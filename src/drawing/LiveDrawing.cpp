#include "drawing/LiveDrawing.h"

struct LiveDrawing::Kept {
    Drawing drawing;
    bool hasChanged = false;
    std::vector<bool> changedViews;
};

LiveDrawing::LiveDrawing(std::shared_ptr<const SamplePart> part, DrawingRequest request)
    : m_part(std::move(part)), m_request(std::move(request)), m_kept(std::make_unique<Kept>()) {}

LiveDrawing::~LiveDrawing() = default;

const Drawing& LiveDrawing::update(StyleSource& source) {
    Drawing drawn = drawStyle(source, *m_part, m_request);
    const Drawing& before = m_kept->drawing;
    m_kept->changedViews.assign(drawn.views.size(), true);
    for (std::size_t i = 0; i < std::min(drawn.views.size(), before.views.size()); ++i)
        m_kept->changedViews[i] = drawn.views[i].key != before.views[i].key ||
                                  drawn.views[i].primitives != before.views[i].primitives;
    m_kept->hasChanged = drawn.views.size() != before.views.size() || drawn.sheet != before.sheet ||
                         drawn.notes != before.notes ||
                         std::ranges::find(m_kept->changedViews, true) != m_kept->changedViews.end();
    m_kept->drawing = std::move(drawn);
    return m_kept->drawing;
}

const Drawing& LiveDrawing::drawing() const {
    return m_kept->drawing;
}

bool LiveDrawing::hasChanged() const {
    return m_kept->hasChanged;
}

bool LiveDrawing::hasChanged(std::size_t view) const {
    return view < m_kept->changedViews.size() && m_kept->changedViews[view];
}
