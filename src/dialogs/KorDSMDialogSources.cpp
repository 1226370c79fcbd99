#include "dialogs/KorDSMDialogSources.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "controls/KorReadable.h"
#include "controls/KorStyle.h"
#include "services/AddInManager.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"
#include "session/KorDSMWhereUsed.h"
#include "session/SourceSettings.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace {

constexpr int kCaption = 1020;
constexpr int kExplanation = 1021;
constexpr int kTest = 1022;
constexpr int kCountsLater = 1023;
constexpr int kInFolder = 1024;
constexpr int kLeastField = 230; // pixels
constexpr int kUsualWidth = 760; // pixels, in which most connections can be seen whole

QLabel* wrapped(int prompt) {
    auto* label = new QLabel(toQt(Prompts::dsm(prompt)));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

KorDSMDialogSources::KorDSMDialogSources(std::filesystem::path folder, QWidget* parent)
    : QDialog(parent), m_folder(std::move(folder)), m_outcome(new QLabel) {
    KorReadable::keep(this);
    setWindowTitle(toQt(Prompts::dsm(kCaption)).remove(u'…').trimmed());
    auto* lines = new QVBoxLayout(this);
    lines->addWidget(wrapped(kExplanation));
    auto* grid = new QGridLayout;
    lines->addLayout(grid);
    const SourceSettings settings(m_folder);
    const auto add = [&](const std::string& source, SourceId id) {
        addRow(*grid, source, toQt(KorDSMWhereUsed::sourceName(id)), settings.textOf(source));
    };
    add("standard", SourceId::standard());
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        add(addIn.id().id.toStdString(), SourceId::addIn(addIn.id().number));
    add("user", SourceId::user());
    KorControls::setId(m_outcome, kOutcome);
    m_outcome->setTextFormat(Qt::PlainText);
    m_outcome->setWordWrap(true);
    m_outcome->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lines->addWidget(m_outcome);
    lines->addWidget(wrapped(kCountsLater));
    lines->addStretch(1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    lines->addWidget(buttons);
    for (QAbstractButton* button : buttons->buttons()) // as those of the other dialogs
        button->setIcon({});
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(std::min(kUsualWidth, screen()->availableSize().width()), sizeHint().height());
}

void KorDSMDialogSources::addRow(QGridLayout& grid, const std::string& source, const QString& caption,
                                 const std::string& text) {
    const int place = static_cast<int>(m_rows.size());
    auto* label = new QLabel(caption + QStringLiteral(":"));
    auto* field = new QLineEdit(QString::fromStdString(text));
    auto* test = new QPushButton(toQt(Prompts::dsm(kTest)));
    label->setBuddy(field);
    field->setMinimumWidth(kLeastField);
    field->setPlaceholderText(toQt(Prompts::dsm(kInFolder)));
    field->setAccessibleName(caption);
    test->setAccessibleDescription(caption);
    test->setAutoDefault(false);
    KorControls::setId(field, kFirstField + place);
    KorControls::setId(test, kFirstTest + place);
    const auto allow = [test](const QString& typed) {
        test->setEnabled(SourceSettings::isConnection(typed.toStdString()));
    };
    allow(field->text());
    connect(field, &QLineEdit::textChanged, test, allow);
    connect(test, &QPushButton::clicked, this, [this, field] { this->test(*field); });
    grid.addWidget(label, place, 0);
    grid.addWidget(field, place, 1);
    grid.addWidget(test, place, 2);
    m_rows.push_back({source, field});
}

void KorDSMDialogSources::test(const QLineEdit& field) {
    const auto address =
        ServerAddress::parse(field.text().trimmed().toStdString(), field.accessibleName().toStdString());
    const Result<KorString> checked =
        address ? SourceSettings::check(address.value) : Result<KorString>(Result<>{address.error});
    say(checked ? toQt(checked.value) : QString::fromStdString(checked.error), !checked);
}

void KorDSMDialogSources::say(const QString& sentence, bool isFault) {
    QPalette colors;
    if (isFault)
        colors.setColor(QPalette::WindowText, KorStyle::noteColor(palette()));
    m_outcome->setPalette(colors);
    m_outcome->setText(sentence);
}

void KorDSMDialogSources::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1)
        CKorHelp::showTopic("_KorDSMDialogSources");
    else
        QDialog::keyPressEvent(event);
}

void KorDSMDialogSources::accept() {
    std::map<std::string, std::string> texts;
    for (const Row& row : m_rows) {
        const std::string text = row.field->text().trimmed().toStdString();
        if (SourceSettings::isConnection(text))
            if (const auto address = ServerAddress::parse(text, row.field->accessibleName().toStdString());
                !address)
                return say(QString::fromStdString(address.error), true);
        texts[row.source] = text;
    }
    if (const Result<> written = SourceSettings::write(m_folder, texts); !written)
        return say(QString::fromStdString(written.error), true);
    QDialog::accept();
}
