#include "pages/WordOffer.h"

#include "controls/KorLineEdit.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCompleter>
#include <QKeyEvent>
#include <QPainter>
#include <QStringListModel>
#include <QStyle>
#include <QStyleOption>

namespace {

constexpr int kKnownWords = 1413;

// As combos have it.
QIcon arrowFor(const QWidget& field) {
    constexpr int kSize = 16;
    const qreal ratio = field.devicePixelRatioF();
    QPixmap picture(QSize(kSize, kSize) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QStyleOption option;
    option.initFrom(&field);
    option.rect = QRect(4, 4, kSize - 8, kSize - 8);
    field.style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &option, &painter, &field);
    return picture;
}

} // namespace

WordOffer::WordOffer(KorLineEdit& field, std::function<std::vector<KorString>()> words)
    : QObject(&field), m_field(field), m_words(std::move(words)), m_model(new QStringListModel(this)),
      m_completer(new QCompleter(m_model, this)) {
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setFilterMode(Qt::MatchContains);
    field.setCompleter(m_completer);
    field.installEventFilter(this);
    m_open = field.addAction(arrowFor(field), QLineEdit::TrailingPosition);
    m_open->setText(toQt(Prompts::dsm(kKnownWords)));
    m_open->setToolTip(m_open->text());
    connect(m_open, &QAction::triggered, this, &WordOffer::offerAll);
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this, &WordOffer::take);
}

bool WordOffer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        fill();
    if (event->type() == QEvent::PaletteChange)
        m_open->setIcon(arrowFor(m_field));
    if (event->type() == QEvent::KeyPress && canOffer() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && !m_completer->popup()->isVisible()) {
        offerAll();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

bool WordOffer::canOffer() const {
    return m_field.isEnabled() && !m_field.isReadOnly();
}

void WordOffer::fill() {
    QStringList words;
    for (const KorString& word : m_words())
        words << toQt(word);
    if (words != m_model->stringList())
        m_model->setStringList(words);
}

void WordOffer::offerAll() {
    if (!canOffer())
        return;
    m_field.setFocus(Qt::OtherFocusReason);
    fill();
    m_completer->setCompletionPrefix({});
    m_completer->complete();
}

// The field has shown other texts that were set for committed ones: this one is an edit.
void WordOffer::take(const QString& word) {
    m_field.QLineEdit::setText(word);
    m_field.commit();
}
