#include "controls/label/VELLabelDesignerCtrlWrap.h"

#include "base/KorAssert.h"
#include "controls/KorQt.h"
#include "controls/KorReadable.h"
#include "controls/label/DrawingColors.h"
#include "controls/label/LabelEdit.h"
#include "controls/label/LabelToolBar.h"

#include <QAction>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

namespace {

constexpr double kSourceSize = 2.8; // millimetres, as for all text of the field

QString millimetres(double size) {
    return QLocale().toString(size, 'g', 6) + QStringLiteral(" mm");
}

} // namespace

VELLabelDesignerCtrlWrap::VELLabelDesignerCtrlWrap(QWidget* parent)
    : QWidget(parent), m_unitText(millimetres), m_tools(new LabelToolBar(this)), m_hintRow(new QWidget(this)),
      m_hint(new QLabel(m_hintRow)), m_editAsText(new QPushButton(m_hintRow)), m_edit(new LabelEdit(this)) {
    layOut();
    connectParts();
    setFocusProxy(m_edit);
    m_tools->setBackground(m_look.background);
    SetListOfSizes({});
    setTexts(m_texts);
}

// The field tells about its contents and its cursor while it goes away, when there is nobody left to hear.
VELLabelDesignerCtrlWrap::~VELLabelDesignerCtrlWrap() {
    m_edit->disconnect(this);
}

void VELLabelDesignerCtrlWrap::layOut() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(m_tools);
    auto* row = new QHBoxLayout(m_hintRow);
    row->setContentsMargins(0, 0, 0, 0);
    m_hint->setWordWrap(true);
    row->addWidget(m_hint, 1);
    m_editAsText->setObjectName("editAsText");
    m_editAsText->setAutoDefault(false);
    row->addWidget(m_editAsText);
    column->addWidget(m_hintRow);
    column->addWidget(m_edit, 1);
    m_edit->setMinimumHeight(72);
}

void VELLabelDesignerCtrlWrap::connectParts() {
    connect(m_edit, &QTextEdit::textChanged, this, &VELLabelDesignerCtrlWrap::onContentsChanged);
    connect(m_edit, &QTextEdit::cursorPositionChanged, this, &VELLabelDesignerCtrlWrap::showStyle);
    connect(m_edit, &QTextEdit::currentCharFormatChanged, this, &VELLabelDesignerCtrlWrap::showStyle);
    connect(m_edit, &LabelEdit::tooltipWanted, this, &VELLabelDesignerCtrlWrap::requestTooltip);
    connect(m_edit, &LabelEdit::variableMenuRequested, this, [this](const QPoint& at) {
        if (m_tools->isEnabled())
            m_tools->openVariables(at);
    });
    connect(m_editAsText, &QPushButton::clicked, this, &VELLabelDesignerCtrlWrap::editAsText);
    addActions(m_tools->toggles());

    const auto onPick = [this](auto signal, auto set) {
        connect(m_tools, signal, this, [this, set](const auto& value) {
            pick([&](QTextCharFormat& format) { set(format, value); });
        });
    };
    onPick(&LabelToolBar::fontPicked,
           [](QTextCharFormat& f, const QString& family) { LabelDocument::setFont(f, fromQt(family)); });
    onPick(&LabelToolBar::sizePicked,
           [this](QTextCharFormat& f, double size) { LabelDocument::setSize(f, size, m_look); });
    onPick(&LabelToolBar::colorPicked,
           [this](QTextCharFormat& f, int number) { LabelDocument::setColor(f, number, m_look); });
    onPick(&LabelToolBar::boldPicked, [](QTextCharFormat& f, bool on) { LabelDocument::setBold(f, on); });
    onPick(&LabelToolBar::italicPicked, [](QTextCharFormat& f, bool on) { f.setFontItalic(on); });
    onPick(&LabelToolBar::underlinePicked, [](QTextCharFormat& f, bool on) { f.setFontUnderline(on); });
    connect(m_tools, &LabelToolBar::variablePicked, m_edit, &LabelEdit::insertVariable);
    connect(m_tools, &LabelToolBar::done, m_edit, [this] { m_edit->setFocus(); });
}

void VELLabelDesignerCtrlWrap::setTexts(const LabelDesignerTexts& texts) {
    m_texts = texts;
    m_tools->setTexts(texts);
    m_edit->setTexts(texts);
    m_editAsText->setText(texts.editAsText);
    setLook(m_look);
}

void VELLabelDesignerCtrlWrap::SetGUIIUnits(const UnitText& unitText) {
    m_unitText = unitText ? unitText : millimetres;
    SetListOfSizes(m_sizes);
}

void VELLabelDesignerCtrlWrap::SetListOfSizes(const std::vector<double>& sizes) {
    m_sizes = sizes;
    std::vector<double> offered = sizes;
    offered.push_back(m_look.defaults.size);
    m_tools->setSizes(std::move(offered), m_unitText);
}

void VELLabelDesignerCtrlWrap::SetBkColor(int rgb) {
    LabelLook look = m_look;
    look.background = QColor::fromRgb(static_cast<QRgb>(rgb) & 0xFFFFFFU);
    m_tools->setBackground(look.background);
    setLook(look);
}

void VELLabelDesignerCtrlWrap::SetObjectTypeKey(int key) {
    m_tools->setObjectType(key);
}

template <typename Value>
void VELLabelDesignerCtrlWrap::setDefault(Value LabelStyle::*attribute, const Value& value) {
    LabelLook look = m_look;
    look.defaults.*attribute = value;
    setLook(look);
}

void VELLabelDesignerCtrlWrap::SetDefaultFont(const KorString& family) {
    setDefault(&LabelStyle::font, family);
}

void VELLabelDesignerCtrlWrap::SetDefaultSize(double size) {
    if (!KorAssert::check(size > 0, "text sizes are above 0"))
        return;
    setDefault(&LabelStyle::size, size);
    SetListOfSizes(m_sizes);
}

void VELLabelDesignerCtrlWrap::SetDefaultColor(int number) {
    setDefault(&LabelStyle::color, number);
}

void VELLabelDesignerCtrlWrap::SetDefaultBold(bool on) {
    setDefault(&LabelStyle::bold, on);
}

void VELLabelDesignerCtrlWrap::SetDefaultItalic(bool on) {
    setDefault(&LabelStyle::italic, on);
}

void VELLabelDesignerCtrlWrap::SetDefaultUnderline(bool on) {
    setDefault(&LabelStyle::underline, on);
}

void VELLabelDesignerCtrlWrap::SetString(const KorString& text) {
    m_original = text;
    m_asText = false;
    load();
}

KorString VELLabelDesignerCtrlWrap::GetString() const {
    if (!edited())
        return m_original;
    return raw() ? fromQt(m_edit->words(m_shown)) : LabelFormat::write(m_shown, m_look.defaults);
}

void VELLabelDesignerCtrlWrap::Enable(bool enable) {
    if (enable == m_enabled)
        return;
    m_enabled = enable;
    setLook(m_look);
}

// What was edited stays as the user sees it; an unedited text is read again, since it rests on the defaults.
void VELLabelDesignerCtrlWrap::setLook(const LabelLook& look) {
    const bool keep = edited();
    const LabelRuns shown = m_shown;
    m_look = look;
    load();
    if (keep)
        show(shown);
}

void VELLabelDesignerCtrlWrap::load() {
    LabelReading reading = LabelFormat::parse(m_original, m_look.defaults);
    m_outcome = reading.outcome;
    // Bytes that are no text could not be given back once they went through the field.
    if (!raw() && fromQt(toQt(m_original)) != m_original)
        m_outcome = LabelReading::kNotUnderstood;
    const LabelLook look = shownLook();
    if (raw()) {
        reading.runs.clear();
        LabelFormat::appendText(reading.runs, m_original.view(), look.defaults);
    }
    m_edit->setLook(look, raw());
    show(reading.runs);
    m_loaded = m_shown;
    showState();
}

void VELLabelDesignerCtrlWrap::show(const LabelRuns& runs) {
    m_loading = true;
    m_edit->fill(runs);
    m_loading = false;
    m_shown = m_edit->runs();
    m_edit->setAccessibleDescription(m_edit->words(m_shown));
    showStyle();
}

// Source text is shown in letters of one width, and disabled text on a duller background.
LabelLook VELLabelDesignerCtrlWrap::shownLook() const {
    LabelLook look = m_look;
    if (!m_enabled)
        look.background = KorReadable::mixed(look.background, palette().color(QPalette::Window), 0.35);
    if (raw())
        look.defaults = {fromQt(QFontDatabase::systemFont(QFontDatabase::FixedFont).family()), kSourceSize,
                         DrawingColors::kForeground};
    return look;
}

void VELLabelDesignerCtrlWrap::showState() {
    const bool tools = m_enabled && !raw();
    m_tools->setEnabled(tools);
    for (QAction* action : m_tools->toggles())
        action->setEnabled(tools);
    m_edit->setEditable(tools || (m_enabled && m_asText));
    m_hint->setText(m_outcome == LabelReading::kOtherVersion ? m_texts.otherVersion : m_texts.notUnderstood);
    m_hintRow->setVisible(raw());
    m_editAsText->setVisible(m_enabled && !m_asText);
}

void VELLabelDesignerCtrlWrap::showStyle() {
    if (!m_loading && !raw())
        m_tools->showStyle(m_edit->currentStyle());
}

void VELLabelDesignerCtrlWrap::onContentsChanged() {
    if (m_loading)
        return;
    // Not every change of the document is one of the label: making bold text bold again is none.
    LabelRuns now = m_edit->runs();
    if (now == m_shown)
        return;
    m_shown = std::move(now);
    m_edit->setAccessibleDescription(m_edit->words(m_shown));
    Q_EMIT changed();
}

void VELLabelDesignerCtrlWrap::editAsText() {
    m_asText = true;
    showState();
    m_edit->setFocus();
}

void VELLabelDesignerCtrlWrap::pick(const std::function<void(QTextCharFormat&)>& set) {
    QTextCharFormat format;
    set(format);
    m_edit->mergeCurrentCharFormat(format);
}

void VELLabelDesignerCtrlWrap::requestTooltip(const QPoint& globalPoint) {
    VELTooltipRequest request;
    request.mousePoint = globalPoint;
    Q_EMIT tooltipRequested(request);
    QWidget* owner = request.toolOwner ? request.toolOwner.data() : this;
    const QRect& tool = request.toolRect;
    QToolTip::showText(globalPoint, request.text, owner, {owner->mapFromGlobal(tool.topLeft()), tool.size()});
}

bool VELLabelDesignerCtrlWrap::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    requestTooltip(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}

void VELLabelDesignerCtrlWrap::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_enabled)
        setLook(m_look);
}
