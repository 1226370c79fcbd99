#include "dialogs/KorDSMDialogImport.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "dialogs/CopyPreview.h"
#include "dialogs/RecordChoice.h"
#include "services/Prompts.h"
#include "session/KorDSMWhereUsed.h"

#include <QComboBox>
#include <QLabel>
#include <QScreen>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr int kTemplate = 1015;
constexpr int kHead = 2371;
constexpr int kTargetLabel = 2372;
constexpr int kTarget = 2373;
constexpr int kStyles = 2374;
constexpr int kCount = 2382;

constexpr int kHeadText = 722;   // "Detail styles of %s"
constexpr int kStylesText = 723; // "Which styles are imported"
constexpr int kCountText = 724;  // "%s of %s styles"
constexpr int kImportText = 725;
constexpr int kInto = 604;

constexpr QSize kUsualSize(960, 600);
constexpr double kMostOfScreen = 0.9;

} // namespace

KorDSMDialogImport::KorDSMDialogImport(const KorDSMImport& import, SourceId to, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_wish(import.wishFor(to)),
      m_styles(new RecordChoice(*KorControls::find<QTreeWidget>(this, kStyles))),
      m_count(KorControls::find<QLabel>(this, kCount)), m_preview(new CopyPreview(*this, m_wish)) {
    setTexts(import);
    setUpTargets();
    m_styles->fill(import.styles(), true);
    connect(m_styles, &RecordChoice::changed, this, [this] {
        m_wish.records = m_styles->checked();
        showCount();
        m_preview->show();
    });
    resize(kUsualSize.boundedTo(screen()->availableSize() * kMostOfScreen));
    showCount();
    m_preview->show();
    KorControls::find(this, kStyles)->setFocus();
}

void KorDSMDialogImport::setTexts(const KorDSMImport& import) {
    setWindowTitle(toQt(Prompts::ups(33564)));
    setCaption(kHead, KorString::format(Prompts::dsm(kHeadText), {import.file()}));
    setCaption(kTargetLabel, kInto, "DSM");
    setCaption(1, kImportText, "DSM");
    setCaption(2, 33741);
    KorControls::find(this, kStyles)->setAccessibleName(toQt(Prompts::dsm(kStylesText)));
}

void KorDSMDialogImport::setUpTargets() {
    auto* combo = KorControls::find<QComboBox>(this, kTarget);
    m_targets = KorDSMDeepCopy::targetsFor(SourceId::exchange());
    for (const SourceId id : m_targets)
        combo->addItem(toQt(KorDSMWhereUsed::sourceName(id)));
    combo->setCurrentIndex(static_cast<int>(std::ranges::find(m_targets, m_wish.to) - m_targets.begin()));
    connect(combo, &QComboBox::activated, this, [this](int index) {
        m_wish.to = m_targets[static_cast<std::size_t>(index)];
        m_wish.single.clear();
        m_preview->show();
    });
}

void KorDSMDialogImport::showCount() {
    const auto text = [](std::size_t count) { return KorString::number(static_cast<std::int64_t>(count)); };
    m_count->setText(toQt(
        KorString::format(Prompts::dsm(kCountText), {text(m_wish.records.size()), text(m_styles->count())})));
}
