#include "controls/KorScreenFit.h"

#include <QAbstractItemView>
#include <QLayout>
#include <QScreen>

#include <algorithm>

void KorScreenFit::fit(QWidget& window) {
    constexpr int kFewestRows = 4;
    const QSize room = window.screen()->availableSize() - (window.frameGeometry().size() - window.size());
    if (window.size().boundedTo(room) == window.size())
        return;
    for (auto* list : window.findChildren<QAbstractItemView*>())
        list->setMinimumHeight(
            std::min(list->minimumHeight(), kFewestRows * list->fontMetrics().lineSpacing()));
    if (QLayout* layout = window.layout())
        layout->activate();
    window.resize(window.size().boundedTo(room));
}
