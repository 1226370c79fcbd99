#include "dialogs/KorDSMDialogSources.h"

#include "base/Translation.h"
#include "controls/KorControls.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "controls/KorStyle.h"
#include "dialogs/KorDSMDialogPassword.h"
#include "services/AddInManager.h"
#include "services/Prompts.h"
#include "session/DataFolder.h"
#include "session/KorDSMWhereUsed.h"
#include "session/SourceSettings.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>

namespace {

constexpr int kTemplate = 2450;
constexpr int kExplanation = 2451;
constexpr int kPlaces = 2452;
constexpr int kWhen = 2454;

constexpr int kTitle = 1020;
constexpr int kExplanationText = 1021;
constexpr int kTest = 1022;
constexpr int kWhenText = 1023;
constexpr int kInFolder = 1024;
constexpr int kLeastField = 230; // pixels

} // namespace

KorDSMDialogSources::KorDSMDialogSources(std::filesystem::path folder, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_folder(std::move(folder)),
      m_outcome(KorControls::find<QLabel>(this, kOutcome)) {
    setWindowTitle(toQt(Prompts::dsm(kTitle)).remove(u'…').trimmed());
    setCaption(kExplanation, kExplanationText, "DSM");
    setCaption(kWhen, kWhenText, "DSM");
    setCaption(1, 33740);
    setCaption(2, 33741);
    auto* places = new QWidget;
    auto* grid = new QGridLayout(places);
    grid->setContentsMargins({});
    const SourceSettings settings(m_folder);
    const auto add = [&](const std::string& source, SourceId id) {
        addRow(*grid, {id, source, settings.textOf(source), nullptr}, toQt(KorDSMWhereUsed::sourceName(id)));
    };
    add("standard", SourceId::standard());
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        add(addIn.id().id.toStdString(), SourceId::addIn(addIn.id().number));
    add("user", SourceId::user());
    grid->setRowStretch(static_cast<int>(m_rows.size()), 1);
    KorControls::find<QScrollArea>(this, kPlaces)->setWidget(places);
    m_rows.front().field->setFocus();
}

void KorDSMDialogSources::addRow(QGridLayout& grid, Row row, const QString& caption) {
    const int place = static_cast<int>(m_rows.size());
    auto* label = new QLabel(KorMnemonics::literal(caption) + QStringLiteral(":"));
    auto* field = row.field = new QLineEdit(QString::fromStdString(row.text));
    auto* test = new QPushButton(toQt(Prompts::dsm(kTest)));
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(field);
    field->setMinimumWidth(kLeastField);
    field->setPlaceholderText(toQt(Prompts::dsm(kInFolder)));
    field->setAccessibleName(caption);
    test->setAccessibleDescription(caption);
    test->setAutoDefault(false);
    KorControls::setId(field, kFirstField + place);
    KorControls::setId(test, kFirstTest + place);
    const auto allow = [test](const QString& typed) {
        test->setEnabled(ServerAddress::isConnection(typed.toStdString()));
    };
    allow(field->text());
    connect(field, &QLineEdit::textChanged, test, allow);
    connect(test, &QPushButton::clicked, this, [this, field] { this->test(*field); });
    grid.addWidget(label, place, 0);
    grid.addWidget(field, place, 1);
    grid.addWidget(test, place, 2);
    m_rows.push_back(std::move(row));
}

QBoxLayout* KorDSMDialogSources::saidLine() const {
    return qobject_cast<QBoxLayout*>(m_outcome->parentWidget()->layout());
}

void KorDSMDialogSources::test(const QLineEdit& field) {
    const auto address =
        ServerAddress::parse(field.text().trimmed().toStdString(), field.accessibleName().toStdString());
    if (!address)
        return say(QString::fromStdString(address.error), true);
    say({}, false);
    SourceSettings::Checked checked = SourceSettings::check(address.value);
    if (checked.isRefused)
        KorDSMDialogPassword::ask(
            address.value, checked.error,
            [&](const ServerAddress& server) {
                checked = SourceSettings::check(server);
                return Result<>{checked.isRefused ? checked.error : std::string()};
            },
            this);
    say(checked ? toQt(checked.value) : QString::fromStdString(checked.error), !checked);
}

void KorDSMDialogSources::say(const QString& sentence, bool isFault) {
    KorStyle::setNoteColor(*m_outcome, isFault);
    m_outcome->setText(sentence);
}

void KorDSMDialogSources::accept() {
    std::map<std::string, std::string> texts;
    m_moved.clear();
    for (const Row& row : m_rows) {
        const std::string text = row.field->text().trimmed().toStdString();
        if (ServerAddress::isConnection(text))
            if (const auto address = ServerAddress::parse(text, row.field->accessibleName().toStdString());
                !address)
                return say(QString::fromStdString(address.error), true);
        if (text == row.text)
            continue;
        if (std::error_code none; !text.empty() && !ServerAddress::isConnection(text) &&
                                  !std::filesystem::exists(m_folder / text, none) &&
                                  m_told.insert(text).second)
            return say(toQt(KorString::format(
                           translated("There is no file \"%s\". If it is meant, press OK again; for the User "
                                      "database a new, empty one is made there."),
                           {(m_folder / text).string()})),
                       true);
        texts[row.source] = text;
        m_moved.push_back(row.id);
    }
    std::filesystem::path made;
    Result<> written = makeUserDatabase(texts, made);
    if (written)
        written = SourceSettings::write(m_folder, texts);
    if (std::error_code none; !written && !made.empty())
        std::filesystem::remove(made, none);
    if (!written)
        return say(QString::fromStdString(written.error), true);
    QDialog::accept();
}

// Where it is meant to be, and is not yet.
Result<> KorDSMDialogSources::makeUserDatabase(const std::map<std::string, std::string>& texts,
                                               std::filesystem::path& made) const {
    const auto user = texts.find("user");
    std::error_code none;
    if (user == texts.end() || user->second.empty() || ServerAddress::isConnection(user->second) ||
        std::filesystem::exists(m_folder / user->second, none))
        return {};
    Result<> result = DataFolder::makeUserDatabase(m_folder / user->second);
    if (result)
        made = m_folder / user->second;
    return result;
}
