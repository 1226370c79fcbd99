#include "controls/KorTemplates.h"

#include "base/EditorSession.h"

#include <QVariant>

namespace {

constexpr char kTemplateProperty[] = "templateId";

struct TemplateFactory {
    KorTemplates::Factory make;
};

KorTemplates::Factory& factory() {
    return EditorSession::currentPart<TemplateFactory>().make;
}

} // namespace

void KorTemplates::setFactory(Factory newFactory) {
    factory() = std::move(newFactory);
}

bool KorTemplates::setUp(int templateId, QWidget* window) {
    if (!factory() || !factory()(templateId, window))
        return false;
    window->setProperty(kTemplateProperty, templateId);
    return true;
}

int KorTemplates::templateOf(const QWidget* window) {
    return window->property(kTemplateProperty).toInt();
}
