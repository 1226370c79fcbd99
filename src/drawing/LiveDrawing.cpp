#include "drawing/LiveDrawing.h"

#include "drawing/SheetLayout.h"

namespace {

// What all views take from the style and its settings. Where one of these changes, all are drawn anew.
struct SharedByViews {
    StructDetailStyle style;
    StructDetHcadSettings settings;
    std::vector<int> shown;
    bool isOverview = false;
    std::set<std::int32_t> entriesOff;

    bool operator==(const SharedByViews&) const = default;

    static SharedByViews of(const DrawingContext& context) {
        SharedByViews shared{context.style, context.pens.settings(), context.shown, context.isOverview,
                             context.entriesOff};
        const StructDetailStyle plain;
        shared.style.name = plain.name;
        shared.style.description = plain.description;
        shared.style.arrangeStrategyKey = plain.arrangeStrategyKey;
        shared.style.objectSelectionStrategy = plain.objectSelectionStrategy;
        shared.style.titleFormat = plain.titleFormat;
        shared.style.titlePosition = plain.titlePosition;
        shared.style.cutViewTitleFormat = plain.cutViewTitleFormat;
        shared.style.cutViewTitlePosition = plain.cutViewTitlePosition;
        shared.style.viewRequests = plain.viewRequests;
        return shared;
    }
};

} // namespace

struct LiveDrawing::Kept {
    std::optional<StyleRows> rows;
    SourceId source{};
    DrawingRequest request;
    std::optional<SharedByViews> shared;
    SheetLayout::Views views;
    SheetLayout layout;
    Drawing drawing;
    bool hasChanged = false;

    bool isAsItWas(StyleSource& now, const DrawingRequest& wanted) {
        if (!rows || !(source == now.id())) {
            rows.emplace(now);
            views.clear();
            source = now.id();
            return false;
        }
        const bool stands = rows->comeBack(now);
        return stands && request == wanted;
    }

    // The view as it was, where nothing that it hangs on has changed.
    std::shared_ptr<const DrawnView> known(const DrawingContext& context, std::int32_t key) const {
        const auto found = std::ranges::find_if(views, [&](const auto& view) {
            return view->picture.key == key && view->labelledBefore == context.labelled &&
                   rows->stand(view->reads);
        });
        return found == views.end() ? nullptr : *found;
    }

    std::shared_ptr<const DrawnView> view(DrawingContext& context, std::int32_t key) {
        std::shared_ptr<const DrawnView> view = known(context, key);
        if (!view)
            return std::make_shared<const DrawnView>(DrawnView::draw(context, key, request.view == key));
        rows->readAgain(view->reads, view->notes);
        context.labelled = view->labelledAfter;
        return view;
    }

    // The views that are wanted, in their order.
    std::vector<std::int32_t> wantedViews(const StructDetailStyle& style) const {
        std::vector<std::int32_t> wanted;
        if (style.key <= 0)
            return {request.view};
        for (int i = 0; i < style.getLengthItems(); ++i)
            if (const std::int32_t key = style.getViewRequestAt(i);
                key > 0 && (request.view == 0 || request.view == key))
                wanted.push_back(key);
        return wanted;
    }

    void draw(const StructDetailStyle& style, const SamplePart& part, SeenLines& seen) {
        static const StructDetHcadSettings kPlain;
        const auto* settings = rows->row<StructDetHcadSettings>(style.hcadSettingsKey);
        Pens pens(*rows, settings ? *settings : kPlain, request.support);
        DrawingContext context{*rows, pens, style, part, seen, {}, {}};
        if (style.key > 0)
            context.chain = std::make_shared<const Provenance>(Provenance{
                rows->step(style, {"arrange_strategy", "object_selection_strategy", "automatic_clipping",
                                   "grid_reference_settings", "drawing_settings"})});
        context.entriesOff = request.entriesOff;
        context.repeatsDimensions = request.repeatsDimensions;
        selectObjects(context);
        if (SharedByViews now = SharedByViews::of(context); shared != now) {
            shared = std::move(now);
            views.clear();
        }
        SheetLayout::Views all;
        SheetLayout::Views drawn;
        for (const std::int32_t key : wantedViews(style)) {
            all.push_back(view(context, key));
            if (!all.back()->picture.primitives.empty())
                drawn.push_back(all.back());
        }
        views = std::move(all);
        layout.lay(context, drawn, drawing);
    }

    void update(const SamplePart& part, SeenLines& seen) {
        static const StructDetailStyle kNoStyle;
        const StyleRows::Work work(*rows);
        const auto* style = rows->row<StructDetailStyle>(request.style);
        const Primitives sheet = std::move(drawing.sheet);
        const std::size_t count = drawing.views.size();
        const std::string name = drawing.style;
        drawing.sheet = {};
        if ((style || (request.style == 0 && request.view > 0)) && part.main()) {
            drawing.style = style ? style->name.toStdString() : std::string();
            drawing.part = part.name;
            draw(style ? *style : kNoStyle, part, seen);
        } else {
            views.clear();
            shared.reset();
            layout = SheetLayout();
            drawing = Drawing();
        }
        hasChanged = drawing.views.size() != count || drawing.style != name ||
                     drawing.notes != work.notes() || drawing.sheet != sheet ||
                     std::ranges::count(layout.changed(), true) > 0;
        drawing.notes = work.notes();
        rows->forgetChanged();
    }
};

LiveDrawing::LiveDrawing(std::shared_ptr<const SamplePart> part, DrawingRequest request,
                         std::shared_ptr<SeenLines> seen)
    : m_part(std::move(part)), m_request(std::move(request)),
      m_seen(seen ? std::move(seen) : std::make_shared<SeenLines>()), m_kept(std::make_unique<Kept>()) {}

LiveDrawing::~LiveDrawing() = default;

const Drawing& LiveDrawing::update(StyleSource& source) {
    const bool isAsItWas = m_kept->isAsItWas(source, m_request);
    m_kept->hasChanged = false;
    if (!isAsItWas) {
        m_kept->request = m_request;
        m_kept->update(*m_part, *m_seen);
    }
    return m_kept->drawing;
}

bool LiveDrawing::isAsItWas(StyleSource& source) {
    const bool isAsItWas = m_kept->isAsItWas(source, m_request);
    if (!isAsItWas)
        m_kept = std::make_unique<Kept>();
    return isAsItWas;
}

Drawing LiveDrawing::take() {
    m_kept->views.clear();
    m_kept->layout = {};
    m_kept->shared.reset();
    if (m_kept->rows)
        m_kept->rows->forgetMade();
    return std::exchange(m_kept->drawing, {});
}

const Drawing& LiveDrawing::drawing() const {
    return m_kept->drawing;
}

bool LiveDrawing::hasChanged() const {
    return m_kept->hasChanged;
}

bool LiveDrawing::hasChanged(std::size_t view) const {
    const std::vector<bool>& changed = m_kept->layout.changed();
    return m_kept->hasChanged && view < changed.size() && changed[view];
}
