#include "dialogs/CopyPreview.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "controls/UserInput.h"
#include "services/Prompts.h"
#include "session/KorDSMExchange.h"
#include "session/KorDSMLockWait.h"
#include "session/KorDSMValueText.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <array>
#include <map>

namespace {

using Row = ImportReport::Row;

constexpr int kRows = 2375;
constexpr int kNamesakes = 2376;
constexpr std::array kRadios = {2377, 2378, 2379}; // in the order of eNamesakes
constexpr int kSummary = 2380;
constexpr int kProgress = 2381;

constexpr int kNamesakesText = 605;
constexpr int kFirstRadioText = 606;
constexpr int kRecordTitle = 609;
constexpr int kFateTitle = 610;
constexpr int kKind = 612; // "%s (%s)"
constexpr int kNothing = 613;
constexpr int kEnded = 720;        // "It was not looked at to the end ..."
constexpr int kOneAlone = 721;     // "What is done with this one alone"
constexpr int kProgressText = 265; // "%s: Esc cancels"

template <typename T>
T& control(QDialog& dialog, int id) {
    return *KorControls::find<T>(&dialog, id);
}

KorString counted(const KorString& text, std::size_t count) {
    return KorString::format(Prompts::dsm(kKind),
                             {text, KorString::number(static_cast<std::int64_t>(count))});
}

// Lets the user choose what is done with one record, where the target has another one of its name.
class FateDelegate : public QStyledItemDelegate {
public:
    using Choose = std::function<void(RowRef, eNamesakes)>;

    FateDelegate(Choose choose, QObject* parent) : QStyledItemDelegate(parent), m_choose(std::move(choose)) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        if (index.column() != 1)
            return nullptr;
        auto* combo = new QComboBox(parent);
        combo->setAccessibleName(toQt(Prompts::dsm(kOneAlone)));
        for (int i = 0; i < std::ssize(kRadios); ++i)
            combo->addItem(toQt(Prompts::dsm(kFirstRadioText + i)).remove(u'&'));
        connect(combo, &QComboBox::activated, combo, [this, combo] {
            Q_EMIT const_cast<FateDelegate*>(this)->commitData(combo);
            Q_EMIT const_cast<FateDelegate*>(this)->closeEditor(combo);
        });
        QTimer::singleShot(0, combo, &QComboBox::showPopup); // when it stands in its place
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        static_cast<QComboBox*>(editor)->setCurrentIndex(index.data(kNamesakesRole).toInt());
    }
    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override {
        const RowRef row{static_cast<eTableType>(index.data(kTableRole).toInt()),
                         index.data(kKeyRole).toInt()};
        const int chosen = static_cast<QComboBox*>(editor)->currentIndex();
        if (chosen != index.data(kNamesakesRole).toInt())
            m_choose(row, static_cast<eNamesakes>(chosen));
    }

    static constexpr int kTableRole = Qt::UserRole;
    static constexpr int kKeyRole = Qt::UserRole + 1;
    static constexpr int kNamesakesRole = Qt::UserRole + 2;

private:
    Choose m_choose;
};

eNamesakes namesakesOf(Row::eFate fate) {
    return fate == Row::eFate::kUsedTheirs ? eNamesakes::kUseTheirs
           : fate == Row::eFate::kReplaced ? eNamesakes::kReplace
                                           : eNamesakes::kKeepBoth;
}

// One trial as the user sees it: nothing can be touched meanwhile, and Esc ends it.
class TrialRun : public QObject {
public:
    explicit TrialRun(QProgressBar& progress) : m_progress(progress) {
        m_previous = KorDSMExchange::tell({[this](int steps, const KorString& name) { start(steps, name); },
                                           [this](int done) { step(done); },
                                           {},
                                           {},
                                           {}});
        m_since.start();
        QApplication::setOverrideCursor(Qt::WaitCursor);
        qApp->installEventFilter(this);
    }
    ~TrialRun() override {
        qApp->removeEventFilter(this);
        QApplication::restoreOverrideCursor();
        m_progress.hide();
        KorDSMExchange::tell(m_previous);
    }
    TrialRun(const TrialRun&) = delete;
    TrialRun& operator=(const TrialRun&) = delete;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (KorDSMLockWait::isWaiting() || !swallowsInput(*event))
            return QObject::eventFilter(watched, event);
        if (isEscape(*event))
            KorDSMExchange::cancel();
        return true;
    }

private:
    void start(int steps, const KorString& name) {
        m_progress.setMaximum(steps);
        m_progress.setFormat(toQt(KorString::format(Prompts::dsm(kProgressText), {name})));
    }
    // What is done at once shows no progress.
    void step(int done) {
        constexpr qint64 kAtOnce = 200;
        constexpr qint64 kBetween = 50;
        const qint64 now = m_since.elapsed();
        if (now < kAtOnce || now - m_last < kBetween)
            return;
        m_last = now;
        m_progress.show();
        m_progress.setValue(done);
        QApplication::processEvents();
    }

    QProgressBar& m_progress;
    ExchangeCallbacks m_previous;
    QElapsedTimer m_since;
    qint64 m_last = 0;
};

} // namespace

CopyPreview::CopyPreview(QDialog& dialog, KorDSMDeepCopy::Wish& wish)
    : QObject(&dialog), m_dialog(dialog), m_wish(wish), m_rows(control<QTreeWidget>(dialog, kRows)),
      m_summary(control<QLabel>(dialog, kSummary)), m_progress(control<QProgressBar>(dialog, kProgress)),
      m_done(control<QPushButton>(dialog, 1)) {
    setUpNamesakes();
    setUpRows();
    m_progress.hide();
}

void CopyPreview::setUpNamesakes() {
    control<QGroupBox>(m_dialog, kNamesakes).setTitle(toQt(Prompts::dsm(kNamesakesText)));
    for (std::size_t i = 0; i < kRadios.size(); ++i) {
        auto& radio = control<QRadioButton>(m_dialog, kRadios[i]);
        radio.setText(toQt(Prompts::dsm(kFirstRadioText + static_cast<int>(i))));
        connect(&radio, &QRadioButton::clicked, this, [this, i] {
            m_wish.namesakes = static_cast<eNamesakes>(i);
            m_wish.single.clear();
            show();
        });
    }
    control<QRadioButton>(m_dialog, kRadios[0]).setChecked(true);
}

void CopyPreview::setUpRows() {
    m_rows.setHeaderLabels({toQt(Prompts::dsm(kRecordTitle)), toQt(Prompts::dsm(kFateTitle))});
    m_rows.header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_rows.header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_rows.header()->setStretchLastSection(false);
    if (auto* splitter = qobject_cast<QSplitter*>(m_rows.parentWidget()))
        splitter->setSizes({1000, 2000}); // shares: verdicts are long
    m_rows.setUniformRowHeights(true);
    m_rows.setAccessibleName(toQt(Prompts::dsm(kFateTitle)));
    m_rows.setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_rows.setItemDelegate(
        new FateDelegate([this](RowRef row, eNamesakes namesakes) { choose(row, namesakes); }, this));
}

// The tree is filled anew, which its editor must not live to see.
void CopyPreview::choose(RowRef row, eNamesakes namesakes) {
    m_wish.single[row] = namesakes;
    QMetaObject::invokeMethod(this, &CopyPreview::show, Qt::QueuedConnection);
}

void CopyPreview::show() {
    KorDSMDeepCopy::Outcome outcome;
    {
        const TrialRun run(m_progress);
        outcome = KorDSMDeepCopy::preview(m_wish);
    }
    showRows(outcome.report);
    const auto changesNothing = [](const Row& row) {
        return row.fate == Row::eFate::kEqual || row.fate == Row::eFate::kUsedTheirs;
    };
    const bool isIdle = outcome.done && std::ranges::all_of(outcome.report.rows, changesNothing);
    const bool isEnded = !outcome.done && outcome.error.isEmpty() && !m_wish.records.empty();
    const KorString note = outcome.done && !isIdle ? KorDSMDeepCopy::noteOf(m_wish) : KorString();
    const KorString summary = isIdle         ? Prompts::dsm(kNothing)
                              : outcome.done ? KorDSMDeepCopy::summaryOf(outcome.report)
                              : isEnded      ? Prompts::dsm(kEnded)
                                             : outcome.error;
    m_summary.setText(toQt(note.isEmpty() ? summary : summary + "\n" + note));
    m_done.setEnabled(outcome.done && !isIdle);
}

// By kind; in each what needs a decision comes first, then what is changed in the target.
void CopyPreview::showRows(const ImportReport& report) {
    m_rows.clear();
    std::map<eTableType, std::vector<const Row*>> kinds;
    for (const Row& row : report.rows)
        kinds[row.table].push_back(&row);
    for (auto& [table, rows] : kinds) {
        std::ranges::stable_sort(rows, {}, [](const Row* row) {
            return row->hasNamesake() ? 0 : row->fate == Row::eFate::kNew ? 1 : 2;
        });
        auto* kind = new QTreeWidgetItem(
            &m_rows, {toQt(counted(KorDSMValueText::tableCaption(*findTable(table)), rows.size()))});
        kind->setFirstColumnSpanned(true);
        for (const Row* row : rows) {
            auto* item =
                new QTreeWidgetItem(kind, {toQt(row->name), toQt(KorDSMDeepCopy::fateText(row->fate))});
            if (!row->hasNamesake())
                continue;
            item->setFlags(item->flags() | Qt::ItemIsEditable);
            item->setText(1, item->text(1) + QStringLiteral(" ▾"));
            item->setToolTip(1, toQt(Prompts::dsm(kOneAlone)));
            item->setData(1, FateDelegate::kTableRole, row->table);
            item->setData(1, FateDelegate::kKeyRole, row->key);
            item->setData(1, FateDelegate::kNamesakesRole, static_cast<int>(namesakesOf(row->fate)));
        }
        kind->setExpanded(rows.front()->fate != Row::eFate::kEqual);
    }
}
