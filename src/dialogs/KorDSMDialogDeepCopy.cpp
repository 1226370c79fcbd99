#include "dialogs/KorDSMDialogDeepCopy.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "dialogs/CopyPreview.h"
#include "dialogs/RecordChoice.h"
#include "services/Prompts.h"
#include "session/KorDSMWhereUsed.h"

#include <QComboBox>
#include <QScreen>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr int kTemplate = 2370;
constexpr int kHead = 2371;
constexpr int kSourceLabel = 2372;
constexpr int kSource = 2373;
constexpr int kChoice = 2374;
constexpr int kRows = 2375;

constexpr int kTitle = 601;
constexpr int kInto = 604;
constexpr int kCopyText = 611;
constexpr int kFrom = 616;
constexpr int kChoose = 617;

constexpr QSize kUsualSize(900, 560);
constexpr double kMostOfScreen = 0.9;

} // namespace

KorDSMDialogDeepCopy::KorDSMDialogDeepCopy(SourceId from, std::vector<RowRef> records, QWidget* parent,
                                           std::optional<SourceId> to, RowRef group)
    : KorDSMDialogDeepCopy(KorDSMDeepCopy::Wish{.from = from,
                                                .to = to ? *to : KorDSMDeepCopy::targetsFor(from).front(),
                                                .records = std::move(records),
                                                .group = group},
                           nullptr, parent) {}

KorDSMDialogDeepCopy::KorDSMDialogDeepCopy(SourceId to, const KorDSMSection& section, QWidget* parent,
                                           RowRef group)
    : KorDSMDialogDeepCopy(
          KorDSMDeepCopy::Wish{.from = SourceId::standard(), .to = to, .records = {}, .group = group},
          &section, parent) {}

KorDSMDialogDeepCopy::KorDSMDialogDeepCopy(KorDSMDeepCopy::Wish wish, const KorDSMSection* section,
                                           QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_wish(std::move(wish)), m_section(section),
      m_choice(section ? new RecordChoice(*KorControls::find<QTreeWidget>(this, kChoice)) : nullptr),
      m_preview(new CopyPreview(*this, m_wish)) {
    setTexts();
    setUpSources();
    fillChoices();
    KorControls::find(this, kChoice)->setVisible(m_choice);
    if (m_choice)
        connect(m_choice, &RecordChoice::changed, this, [this] {
            m_wish.records = m_choice->checked();
            m_preview->show();
        });
    resize(kUsualSize.boundedTo(screen()->availableSize() * kMostOfScreen));
    m_preview->show();
    KorControls::find(this, m_choice ? kChoice : kRows)->setFocus();
}

void KorDSMDialogDeepCopy::setTexts() {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    setCaption(kSourceLabel, m_section ? kFrom : kInto, "DSM");
    setCaption(1, kCopyText, "DSM");
    setCaption(2, 33741);
    setCaption(kHead, m_section ? Prompts::dsm(kChoose) : KorDSMDeepCopy::headOf(m_wish));
    KorControls::find(this, kChoice)->setAccessibleName(toQt(Prompts::dsm(kChoose)));
}

void KorDSMDialogDeepCopy::setUpSources() {
    auto* combo = KorControls::find<QComboBox>(this, kSource);
    m_sources = m_section ? KorDSMDeepCopy::originsFor(m_wish.to) : KorDSMDeepCopy::targetsFor(m_wish.from);
    for (const SourceId id : m_sources)
        combo->addItem(toQt(KorDSMWhereUsed::sourceName(id)));
    if (m_section && !m_sources.empty())
        m_wish.from = m_sources.front();
    if (!m_section)
        combo->setCurrentIndex(static_cast<int>(std::ranges::find(m_sources, m_wish.to) - m_sources.begin()));
    connect(combo, &QComboBox::activated, this, [this](int index) {
        if (!m_section)
            m_wish.group = {}; // it lies in another target
        (m_section ? m_wish.from : m_wish.to) = m_sources[static_cast<std::size_t>(index)];
        fillChoices();
        m_preview->show();
    });
}

// What was decided for single records was of those of another source.
void KorDSMDialogDeepCopy::fillChoices() {
    m_wish.single.clear();
    if (!m_choice)
        return;
    m_wish.records.clear();
    m_choice->fill(KorDSMDeepCopy::choicesOf(m_wish.from, *m_section), false);
}
