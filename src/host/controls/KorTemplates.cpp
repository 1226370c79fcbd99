#include "controls/KorTemplates.h"

#include <QVariant>

namespace {

constexpr char kTemplateProperty[] = "templateId";

KorTemplates::Factory& factory() {
    static KorTemplates::Factory instance;
    return instance;
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
