#include "pages/PageHead.h"

#include "base/EditorSession.h"
#include "controls/KorElidedLabel.h"
#include "controls/KorFieldNote.h"
#include "controls/KorFoldingColumns.h"
#include "controls/KorLineEdit.h"
#include "controls/KorMnemonics.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorStyle.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMMessages.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "operations/CurrentRows.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMRecordState.h"
#include "session/KorDSMServers.h"
#include "session/KorDSMTwins.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QResizeEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QToolButton>

namespace {

constexpr int kNameColumn = 1;
constexpr int kPicture = 16;
constexpr int kLeastLetters = 16; // of a name that can be read
constexpr int kRest = 100;        // ms; whoever only passes by does not wait for what is missing below
constexpr int kReadOnlyIcon = 1152;
constexpr int kSharedIcon = 386;
constexpr int kNotStored = 454;
constexpr int kReadOnly = 678;
constexpr int kShared = 679;
constexpr int kWhereUsed = 262;     // "Where used…"
constexpr int kAndMore = 1411;      // "%s and %s more"
constexpr int kMissingBelow = 1412; // "%s things are missing below: %s"

/// A button that loses the end of its text where there is no room for it.
class ElidedButton : public QToolButton {
public:
    QSize minimumSizeHint() const override {
        return {kLeastLetters * fontMetrics().averageCharWidth(), QToolButton::minimumSizeHint().height()};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionToolButton option;
        initStyleOption(&option);
        option.text =
            option.fontMetrics.elidedText(option.text, Qt::ElideRight, width() - 6, Qt::TextShowMnemonic);
        painter.drawComplexControl(QStyle::CC_ToolButton, option);
    }
};

QLabel* plainLabel() {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    return label;
}

QWidget* makeMark(int icon, int prompt) {
    auto* mark = new QWidget;
    auto* line = new QHBoxLayout(mark);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(4);
    auto* picture = new QLabel;
    picture->setPixmap(KorPictures::icon(icon).pixmap(QSize(kPicture, kPicture), mark->devicePixelRatio()));
    picture->setAccessibleName(toQt(Prompts::dsm(prompt)));
    line->addWidget(picture);
    QLabel* text = plainLabel();
    text->setText(picture->accessibleName());
    line->addWidget(text);
    return mark;
}

// Where the item stands, from its source down to what is above it.
KorString pathTo(KorDSMDatabaseItem& item, SourceId source) {
    KorString path = KorDSMWhereUsed::sourceName(source);
    const KorArray<KorString> texts = KorDSMItemPath::textsTo(item);
    for (int i = KorDSMItemPath::kLevelsAboveSource; i < texts.length() - 1; ++i)
        path = KorString::format("%s › %s", {path, texts[i]});
    return path;
}

} // namespace

void PageHead::build() {
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);
    auto* top = new KorFoldingColumns;
    top->setSpacing(8);
    auto* first = new QHBoxLayout;
    first->setSpacing(8);
    auto* marks = new QHBoxLayout;
    marks->setSpacing(8);
    top->addLayout(first, 1);
    top->addLayout(marks);
    auto* second = new QHBoxLayout;
    second->setSpacing(12);
    lines->addLayout(top);
    lines->addLayout(second);
    first->addWidget(m_icon = new QLabel);
    first->addWidget(m_kind = plainLabel());
    QFont bold = m_kind->font();
    bold.setBold(true);
    m_kind->setFont(bold);
    first->addWidget(m_name = new KorLineEdit, 3);
    m_name->setMinimumWidth(kLeastLetters * m_name->fontMetrics().averageCharWidth());
    first->addStretch(2);
    marks->addWidget(m_shared = makeMark(kSharedIcon, kShared));
    marks->addWidget(m_readOnly = makeMark(kReadOnlyIcon, kReadOnly));
    marks->addStretch();
    second->addWidget(m_colleagues = new KorElidedLabel(Qt::ElideRight)); // seen without scrolling
    second->addWidget(m_path = new KorElidedLabel(Qt::ElideMiddle), 1);
    m_path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    second->addWidget(m_users = new ElidedButton);
    lines->addWidget(m_styles = new KorElidedLabel(Qt::ElideRight));
    m_styles->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_users->setAutoRaise(true);
    m_users->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_users->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    lines->addWidget(m_missing = plainLabel());
    m_missing->setWordWrap(true);
    KorStyle::setNoteColor(*m_missing, true);
    KorStyle::setNoteColor(*m_colleagues, true);
    m_missing->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lines->addWidget(m_below = new QLabel);
    m_below->setTextFormat(Qt::RichText);
    m_below->setWordWrap(true);
    m_below->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_below->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    m_below->hide();
    KorStyle::setNoteColor(*m_below, true);
    m_whenIdle.setSingleShot(true);
    m_whenIdle.setInterval(kRest);
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    lines->addWidget(line);
    m_kind->setBuddy(m_name);
    KorFieldNote::prepare(m_name);
    connect(m_name, &KorLineEdit::committed, this, &PageHead::onNameCommitted);
    connect(m_name, &KorLineEdit::textEdited, this, &PageHead::typing);
    connect(m_name, &KorLineEdit::restored, this, [this] {
        KorFieldNote::show(m_name, {});
        Q_EMIT typing();
    });
    connect(m_users, &QToolButton::clicked, this, &PageHead::listUsers);
    connect(m_below, &QLabel::linkActivated, this, &PageHead::goToLack);
    // Another session may be the current one when it is time.
    connect(&m_whenIdle, &QTimer::timeout, this,
            EditorSession::current().forLater([this] { showLacksBelow(); }));
}

void PageHead::load(KorDSMDatabaseItem* item, bool editable, bool leadsElsewhere) {
    m_item = item;
    m_isEditable = editable;
    m_leadsElsewhere = leadsElsewhere;
    const TableSchema* table = item ? findTable(item->tableType()) : nullptr;
    setVisible(table && item->record());
    if (!table || !item->record())
        return;
    if (!m_name)
        build();
    const SourceId source = CurrentRows::source();
    const RowRef shown{table->type, item->recordKey()};
    const bool isSame = source == m_source && shown == m_shown;
    m_source = source;
    m_shown = shown;
    m_icon->setPixmap(KorPictures::icon(KorDSMDefines::iconResource(item->icon()))
                          .pixmap(QSize(kPicture, kPicture), devicePixelRatio()));
    const QString kind = toQt(KorDSMValueText::tableCaption(*table));
    KorMnemonics::setText(*m_kind, kind);
    m_icon->setAccessibleName(kind);
    m_name->setText(toQt(item->record()->name));
    m_name->setReadOnly(!editable);
    m_kind->setAccessibleName(kind + QStringLiteral(": ") +
                              toQt(KorDSMValueText::columnCaption(*table, *table->column(kNameColumn))));
    m_name->setAccessibleName(m_kind->accessibleName());
    m_path->setWhole(toQt(pathTo(*item, source)));
    const KorDSMRecordState::UseCount use = KorDSMRecordState::useCountOf(source, m_shown);
    m_users->setText(toQt(KorDSMRecordState::useText(m_shown, use)));
    m_users->setToolTip(m_users->text() + u'\n' + toQt(Prompts::dsm(kWhereUsed)));
    m_users->setVisible(!m_users->text().isEmpty());
    m_users->setEnabled(use.isUsed() && leadsElsewhere);
    m_styles->setWhole(toQt(KorDSMRecordState::stylesText(use)));
    m_styles->setVisible(!m_styles->whole().isEmpty());
    m_shared->setVisible(use.isShared);
    m_readOnly->setVisible(!editable);
    const QString reason = toQt(KorDSMItemCommands::whyOnlyReadable(*item));
    m_readOnly->setToolTip(reason);
    m_readOnly->setAccessibleDescription(reason);
    m_missing->setText(toQt(KorDSMRecordState::missingText(source, m_shown)));
    // The page does not move under the hand that makes good what was missing.
    m_missing->setVisible(!m_missing->text().isEmpty() || (isSame && !m_missing->isHidden()));
    if (!isSame)
        m_below->hide();
    m_whenIdle.start();
    showColleagues();
}

// The links have the colour that was read on the windows of before.
void PageHead::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_below && !m_below->isHidden())
        m_whenIdle.start();
}

bool PageHead::isEdited() const {
    return m_name && m_name->isEdited();
}

void PageHead::showLacksBelow() {
    if (!isVisible())
        return;
    if (KorDSMBusy::isBusy())
        return m_whenIdle.start();
    const KorDSMRecordState::LacksBelow lacks = KorDSMRecordState::lacksBelow(m_source, m_shown);
    // Links are told by their line: not every desktop has a colour for them that can be read on its windows.
    const QString color = m_below->palette().color(QPalette::WindowText).name();
    KorString names;
    for (const KorDSMRecordState::Lack& lack : lacks.first) {
        const QString link = QStringLiteral("<a href=\"%1 %2 %3\" style=\"color: %4\">%5</a>")
                                 .arg(int{lack.row.table})
                                 .arg(lack.row.key)
                                 .arg(lack.column)
                                 .arg(color)
                                 .arg(toQt(lack.text).toHtmlEscaped());
        names = names + (names.isEmpty() ? "" : "; ") +
                fromQt(m_leadsElsewhere ? link : toQt(lack.text).toHtmlEscaped());
    }
    const auto named = static_cast<std::int64_t>(lacks.first.size());
    if (lacks.count > named)
        names = KorString::format(Prompts::dsm(kAndMore), {names, KorString::number(lacks.count - named)});
    const KorString count = KorString::number(lacks.count) + (lacks.areAllKnown ? "" : "+");
    m_below->setText(
        named == 0 ? QString()
                   : toQt(KorString::format(Prompts::counted(kMissingBelow, lacks.count), {count, names})));
    m_below->setVisible(named > 0);
}

// The place is the table, the key and the column.
void PageHead::goToLack(const QString& place) {
    const QStringList numbers = place.split(u' ');
    DsmGoToRecord message;
    message.source = m_source;
    message.row = {static_cast<eTableType>(numbers[0].toInt()), numbers[1].toInt()};
    message.column = numbers[2].toInt();
    message.within = m_shown;
    KorDSMWhereUsed::whenSettled([message] { KorDSMMainWindow::sendMessage(message); });
}

void PageHead::showColleagues() {
    if (!m_item || !m_colleagues)
        return;
    m_colleagues->setWhole(toQt(KorDSMServers::editorsOf(m_source, m_shown)));
    m_colleagues->setVisible(!m_colleagues->whole().isEmpty());
}

void PageHead::onNameCommitted() {
    const KorString name = fromQt(m_name->text().trimmed());
    const StructRecord* record = CurrentRows::find(m_shown.table, KorOdbcKey(m_shown.key));
    if (!record || !m_isEditable)
        return;
    if (name == record->name) {
        m_name->setText(toQt(record->name));
        KorFieldNote::show(m_name, {});
    } else {
        rename(m_shown, name);
    }
    Q_EMIT typing(); // there may be nothing to apply any more
}

// Parts of a list can have the names of parts of others.
void PageHead::rename(RowRef row, const KorString& name) {
    const std::size_t before = KorDSMUndo::stepCount();
    WriteResult result;
    if (KorDSMRecordCommands::isMade(row.table))
        result =
            static_cast<const WriteResult&>(KorDSMRecordCommands::rename(CurrentRows::source(), row, name));
    else
        result = KorDSMGuardedWrite::setAttributeValue(row.table, KorOdbcKey(row.key), kNameColumn, name);
    KorFieldNote::show(m_name, result.isStored() ? QString() : toQt(Prompts::dsm(kNotStored)));
    if (result.isFailed()) {
        m_name->refuse();
        KorFieldNote::show(m_name, QString::fromStdString(result.error));
    }
    if (!result.isStored())
        return;
    KorDSMTwins::recordWritten(*m_item);
    KorDSMTwins::showName(*m_item);
    DsmRowsChanged message;
    message.changes = KorDSMUndo::changesSince(before);
    KorDSMMainWindow::sendMessage(message);
}

void PageHead::listUsers() {
    auto* dialog = new KorDSMDialogWhereUsed(fromQt(m_name->text()), CurrentRows::source(), m_shown, window(),
                                             KorDSMDialogWhereUsed::eUsers::kOfRecordAlone);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &KorDSMDialogWhereUsed::usageChosen, this, [](const KorDSMUsage& usage) {
        KorDSMWhereUsed::whenSettled([usage] {
            DsmGoToRecord message;
            message.source = usage.source;
            message.row = usage.row;
            KorDSMMainWindow::sendMessage(message);
        });
    });
    dialog->show();
}
