#include "dialogs/KorDSMDialogSearch.h"

#include "base/EditorSession.h"
#include "controls/KorControls.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>

namespace {

constexpr int kTemplate = 2420; // and the picture of the search
constexpr int kField = 2421;
constexpr int kHits = 2422;
constexpr int kSaid = 2423;

constexpr int kTitle = 1000;
constexpr int kPlaceholder = 1001;
constexpr int kNothing = 1002;    // "Nothing has "%s" in it. ... in %s ..."
constexpr int kBestOfEach = 1009; // "%s; the best of each kind"
constexpr int kCount = 1010;
constexpr int kNotPossible = 1011;
constexpr int kAdvice = 1013;
constexpr int kHitList = 1015;

constexpr std::size_t kMostOfAKind = 50;
constexpr int kPauseWhenBusy = 100; // milliseconds

} // namespace

KorDSMDialogSearch::KorDSMDialogSearch(KorDSMSearch& search, SearchHitList::PictureOf pictureOf,
                                       const KorString& typed, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_search(search), m_field(KorControls::find<QLineEdit>(this, kField)),
      m_view(KorControls::find<QListView>(this, kHits)), m_said(KorControls::find<QLabel>(this, kSaid)),
      m_hits(new SearchHitList(std::move(pictureOf), this)) {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    m_field->setPlaceholderText(toQt(Prompts::dsm(kPlaceholder)));
    m_field->setAccessibleName(windowTitle());
    m_field->addAction(KorPictures::bitmap(kTemplate), QLineEdit::LeadingPosition)->setText(windowTitle());
    m_view->setAccessibleName(toQt(Prompts::dsm(kHitList)));
    m_view->setModel(m_hits);
    m_view->setItemDelegate(new SearchHitDelegate(m_view));
    m_field->installEventFilter(this);
    connect(m_field, &QLineEdit::textChanged, this, &KorDSMDialogSearch::look);
    connect(m_view, &QListView::activated, this, &KorDSMDialogSearch::accept);
    connect(m_view, &QListView::clicked, this, &KorDSMDialogSearch::accept);
    // Another session may be the current one when it is time.
    connect(&m_rest, &QTimer::timeout, this, EditorSession::current().forLater([this] { collectAhead(); }));
    m_rest.setSingleShot(true);
    m_field->setText(toQt(typed));
    m_field->selectAll();
    m_field->setFocus();
    if (typed.isEmpty())
        look();
}

KorString KorDSMDialogSearch::typed() const {
    return fromQt(m_field->text());
}

void KorDSMDialogSearch::collectAhead() {
    if (!KorDSMSearch::mayCollect())
        m_rest.start(kPauseWhenBusy);
    else if (m_search.collectAhead())
        m_rest.start(0);
}

void KorDSMDialogSearch::look() {
    m_rest.start(0);
    KorDSMSearchResult result = m_search.find(typed(), kMostOfAKind);
    say(result);
    m_hits->show(SearchWords(typed()), std::move(result.hits));
    if (m_hits->rowCount() > 0)
        m_view->setCurrentIndex(m_hits->index(0));
}

void KorDSMDialogSearch::say(const KorDSMSearchResult& result) {
    KorString text;
    if (SearchWords(typed()).isEmpty()) {
        text = Prompts::dsm(kAdvice);
    } else if (result.hits.empty()) {
        KorString sources;
        for (const KorString& name : m_search.sourceNames())
            sources = sources.isEmpty() ? name : sources + KorString(", ") + name;
        text = KorString::format(Prompts::dsm(kNothing), {KorDSMValueText::shortName(typed()), sources});
    } else {
        const auto count = static_cast<std::int64_t>(result.hits.size());
        text = KorString::format(Prompts::counted(kCount, count), {KorString::number(count)});
        if (!result.areAll)
            text = KorString::format(Prompts::dsm(kBestOfEach), {text});
    }
    m_said->setText(toQt(text));
    m_field->setAccessibleDescription(m_said->text());
}

bool KorDSMDialogSearch::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_field && event->type() == QEvent::KeyPress)
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QApplication::sendEvent(m_view, event);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            accept();
            return true;
        default:
            break;
        }
    return KorDSMDialog::eventFilter(watched, event);
}

void KorDSMDialogSearch::accept() {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid())
        return;
    const KorDSMSearchHit& hit = m_hits->hit(current.row());
    if (!hit.isOffered) {
        m_said->setText(toQt(KorString::format(Prompts::dsm(kNotPossible), {hit.text})));
        return;
    }
    m_chosen = hit;
    KorDSMDialog::accept();
}
