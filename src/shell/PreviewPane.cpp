#include "shell/PreviewPane.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorComboBox.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kName = 900;
constexpr int kSamplePart = 901;
constexpr int kCloseList = 908;
constexpr int kNotes = 909; // "%d not shown"
constexpr int kClosePicture = 2098;
constexpr int kBeforeAndAfter = 1167;

struct Tool {
    int id; // and picture
    int prompt;
};
constexpr Tool kTools[] = {
    {PreviewPane::kFit, 902},     {PreviewPane::kActualSize, 903}, {PreviewPane::kZoomIn, 904},
    {PreviewPane::kZoomOut, 905}, {PreviewPane::kBefore, 906},     {PreviewPane::kOutput, 1110},
    {PreviewPane::kPlace, 907},
};

// How many lines the texts have in a list of this width.
int wrappedLines(const QListWidget& list, const QStringList& texts, int width) {
    const QFontMetrics metrics = list.fontMetrics();
    const int margins =
        2 * (list.frameWidth() + list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1) +
        list.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    int lines = 0;
    for (const QString& text : texts) {
        const QRect wrapped = metrics.boundingRect(QRect(0, 0, width - margins, 0), Qt::TextWordWrap, text);
        lines += std::max(1, (wrapped.height() + metrics.lineSpacing() - 1) / metrics.lineSpacing());
    }
    return lines;
}

QLabel* makeLine() {
    auto* label = new QLabel;
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

} // namespace

PreviewPane::PreviewPane(QWidget* parent)
    : QWidget(parent), m_parts(new KorComboBox), m_tools(new KorButtonGroup), m_head(makeLine()),
      m_slider(new QSlider(Qt::Horizontal)), m_view(new PreviewView), m_note(makeLine()),
      m_listCaption(makeLine()), m_list(new QListWidget), m_foot(makeLine()), m_notes(makeLine()) {
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(4);
    lines->addWidget(makeTools());
    lines->addWidget(makeHead());
    lines->addWidget(m_view, 1);
    lines->addWidget(m_note);
    lines->addWidget(m_listBox = makeList());
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_foot, 1);
    m_notes->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    m_notes->setWordWrap(false);
    foot->addWidget(m_notes);
    lines->addLayout(foot);
    m_foot->setForegroundRole(QPalette::PlaceholderText);
    m_notes->setForegroundRole(QPalette::PlaceholderText);
    m_note->setTextFormat(Qt::RichText);
    m_note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_note->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(m_note, &QLabel::linkActivated, this, &PreviewPane::linkFollowed);
    setAccessibleName(toQt(Prompts::dsm(kName)));
    m_view->setAccessibleName(toQt(Prompts::dsm(kName)));
    setNote({});
    hideList();
}

QWidget* PreviewPane::makeTools() {
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    m_parts->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_parts->setMinimumContentsLength(8);
    m_parts->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_parts->setAccessibleName(toQt(Prompts::dsm(kSamplePart)));
    m_parts->setToolTip(toQt(Prompts::dsm(kSamplePart)));
    line->addWidget(m_parts, 1);
    m_tools->setIconSize({16, 16});
    for (const Tool& tool : kTools)
        m_tools->addButton(tool.id, Prompts::dsm(tool.prompt), KorPictures::bitmap(tool.id));
    m_tools->button(kBefore)->setCheckable(true);
    line->addWidget(m_tools);
    connect(m_tools, &KorButtonGroup::buttonPressed, this, &PreviewPane::toolPressed);
    connect(m_parts, &QComboBox::activated, this,
            [this](int index) { Q_EMIT partChosen(m_parts->itemData(index).toString()); });
    return row;
}

QWidget* PreviewPane::makeHead() {
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_head, 1);
    line->addWidget(m_slider);
    constexpr int kWidth = 120;
    m_slider->setFixedWidth(kWidth);
    m_slider->setRange(0, 100);
    m_slider->setPageStep(25);
    QSizePolicy policy = m_slider->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // the picture is not to jump
    m_slider->setSizePolicy(policy);
    const QString text = toQt(Prompts::dsm(kBeforeAndAfter));
    m_slider->setAccessibleName(text);
    m_slider->setToolTip(text);
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) { Q_EMIT compared(value / 100.0); });
    connect(m_view, &PreviewView::divided, this, &PreviewPane::compared);
    return row;
}

QWidget* PreviewPane::makeList() {
    auto* box = new QWidget;
    auto* lines = new QVBoxLayout(box);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);
    auto* head = new QHBoxLayout;
    head->addWidget(m_listCaption, 1);
    auto* close = new QToolButton;
    close->setAutoRaise(true);
    close->setIcon(KorPictures::bitmap(kClosePicture));
    close->setToolTip(toQt(Prompts::dsm(kCloseList)));
    close->setAccessibleName(toQt(Prompts::dsm(kCloseList)));
    head->addWidget(close);
    lines->addLayout(head);
    m_list->setAccessibleName(toQt(Prompts::dsm(kName)));
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setWordWrap(true);
    m_list->setAlternatingRowColors(true); // one sentence can have several lines
    lines->addWidget(m_list);
    connect(close, &QToolButton::clicked, this, &PreviewPane::hideList);
    connect(m_list, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { Q_EMIT rowChosen(m_list->row(item)); });
    connect(m_list, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        if (!style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick))
            Q_EMIT rowChosen(m_list->row(item));
    });
    return box;
}

void PreviewPane::setParts(const std::vector<std::pair<std::string, KorString>>& parts) {
    m_parts->clear();
    for (const auto& [name, text] : parts)
        m_parts->addItem(toQt(text), QString::fromStdString(name));
}

bool PreviewPane::hasParts() const {
    return m_parts->count() > 0;
}

void PreviewPane::setPart(const std::string& name) {
    m_parts->setCurrentIndex(m_parts->findData(QString::fromStdString(name)));
}

void PreviewPane::setHead(const QString& text) {
    m_head->setText(text);
    m_view->setAccessibleDescription(text);
}

void PreviewPane::setFoot(const QString& schematic, const QStringList& notes, bool isTrial) {
    QFont font = m_notes->font();
    font.setBold(isTrial);
    m_foot->setFont(font);
    m_foot->setForegroundRole(isTrial ? QPalette::WindowText : QPalette::PlaceholderText);
    m_foot->setText(schematic);
    m_notes->setText(toQt(KorString::format(Prompts::dsm(kNotes), {KorString::number(notes.size())})));
    m_notes->setToolTip(notes.join(u'\n'));
    m_notes->setAccessibleDescription(notes.join(u' '));
    m_notes->setVisible(!notes.isEmpty());
}

void PreviewPane::setNote(const QString& text, const QString& link) {
    QString shown = text.toHtmlEscaped().replace(u'\n', QLatin1String("<br>"));
    if (!link.isEmpty())
        shown += QStringLiteral(" <a href=\"part\">%1</a>").arg(link.toHtmlEscaped());
    m_note->setText(shown);
    keepRoom();
}

void PreviewPane::setComparison(bool isPossible, double share) {
    m_tools->enableButton(kBefore, isPossible);
    m_tools->button(kBefore)->setChecked(share >= 1);
    m_slider->setVisible(isPossible);
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(static_cast<int>(std::lround(share * 100)));
}

void PreviewPane::setPlaceText(const QString& text) {
    m_tools->setButtonText(kPlace, fromQt(text), {});
}

void PreviewPane::setOutput(const QList<QAction*>& actions) {
    auto* menu = new QMenu(m_tools);
    menu->addActions(actions);
    m_tools->setButtonMenu(kOutput, menu);
    m_tools->button(kOutput)->setPopupMode(QToolButton::InstantPopup);
}

void PreviewPane::showList(const QString& caption, const QStringList& rows, int marked) {
    m_listCaption->setText(caption);
    m_list->setAccessibleName(caption);
    m_list->clear();
    m_list->addItems(rows);
    for (int row = 0; row < m_list->count(); ++row)
        m_list->item(row)->setToolTip(rows[row]);
    if (QListWidgetItem* item = m_list->item(marked)) {
        QFont font = item->font();
        font.setBold(true);
        item->setFont(font);
    }
    m_list->setCurrentRow(std::max(marked, 0));
    // Where there is little room the picture keeps more of it.
    constexpr int kMostLines = 8;
    constexpr int kLeastLines = 3;
    const int count = wrappedLines(*m_list, rows, width());
    const auto heightOf = [this](int shown) {
        return m_list->sizeHintForRow(0) * shown + 2 * m_list->frameWidth() + 2;
    };
    m_list->setMaximumHeight(heightOf(std::min(count, kMostLines)));
    m_list->setMinimumHeight(heightOf(std::min(count, kLeastLines)));
    m_listBox->show();
    keepRoom();
}

void PreviewPane::hideList() {
    m_listBox->hide();
    keepRoom();
}

bool PreviewPane::hasList() const {
    return !m_listBox->isHidden();
}

// Sentences have room before they are there, so that the picture does not jump; not in a low pane, where they
// have none beside a list either. Nothing is to lie upon something else: lines that wrap need more than
// layouts ask for.
void PreviewPane::keepRoom() {
    constexpr int kLettersOfASentence = 90;
    const int linesOfALowPane = hasList() ? 20 : 13;
    const QFontMetrics metrics = m_note->fontMetrics();
    const bool isNarrow = width() < kLettersOfASentence * metrics.averageCharWidth();
    const bool isLow = height() < linesOfALowPane * metrics.lineSpacing();
    m_note->setMinimumHeight((isLow ? 0 : isNarrow ? 2 : 1) * metrics.lineSpacing());
    m_note->setVisible(!isLow || (!hasList() && !m_note->text().isEmpty()));
    setMinimumHeight(std::max(layout()->minimumHeightForWidth(width()), 0));
}

bool PreviewPane::event(QEvent* event) {
    const bool isDone = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
        keepRoom();
    return isDone;
}

void PreviewPane::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        CKorHelp::showTopic("_Style_Preview");
        return;
    }
    if (event->key() == Qt::Key_Escape && hasList()) {
        hideList();
        m_view->setFocus();
        return;
    }
    QWidget::keyPressEvent(event);
}
