#include "dialogs/KorDSMDialogLoadLinetype.h"

#include "base/KorAssert.h"
#include "base/LinetypeFile.h"
#include "controls/KorControls.h"
#include "controls/KorLineEdit.h"
#include "controls/KorQt.h"
#include "controls/linetype/CKorlinetypelistctrl.h"
#include "services/Prompts.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>

#include <tuple>

namespace {

constexpr int kTemplate = 1165;
constexpr int kFileName = 1063;
constexpr int kFileButton = 1062;
constexpr int kListLabel = 1064;
constexpr int kList = 1268;
constexpr int kNote = 1269; // the dialog's own: what is wrong with a file that has line types

LinetypeListPrompts listPrompts() {
    return {Prompts::ups(22552), Prompts::dsm(340), Prompts::dsm(341),
            Prompts::dsm(342),   Prompts::dsm(343), Prompts::dsm(344)};
}

} // namespace

KorDSMDialogLoadLinetype::KorDSMDialogLoadLinetype(QWidget* parent) : KorDSMDialog(kTemplate, parent) {
    m_list = KorControls::find<CKorlinetypelistctrl>(this, kList);
    auto* file = KorControls::find<QAbstractButton>(this, kFileButton);
    if (!KorAssert::check(m_list && file, "the template has a list and a file field"))
        return;
    m_list->setPrompts(listPrompts());
    connect(file, &QAbstractButton::clicked, this, &KorDSMDialogLoadLinetype::onFileButton);
    connect(m_list, &CKorlinetypelistctrl::linetypePicked, this,
            [this](const KorString& name) { m_selectedLinetype = name; });
    connect(m_list, &CKorlinetypelistctrl::linetypeActivated, this, &KorDSMDialogLoadLinetype::accept);
}

void KorDSMDialogLoadLinetype::setVisible(bool visible) {
    if (visible && !isVisible())
        OnInitDialog();
    KorDSMDialog::setVisible(visible);
}

void KorDSMDialogLoadLinetype::OnInitDialog() {
    if (!m_list)
        return;
    setWindowTitle(toQt(Prompts::ups(22550)));
    setCaption(kFileButton, 22551);
    setCaption(kListLabel, 22552);
    setCaption(2, 21017);
    fillList();
    m_list->setDefaultPrompts();
    m_selectedLinetype = {};
    showMembers();
    m_list->setFocus();
}

void KorDSMDialogLoadLinetype::fillList() {
    m_list->RemoveAll();
    m_list->SetSupportPath(m_directory);
    m_list->SetLinetypeFile(m_fileName);
    m_list->LoadLinetype("*");
}

void KorDSMDialogLoadLinetype::showMembers() {
    if (auto* edit = KorControls::find<KorLineEdit>(this, kFileName)) {
        edit->setText(toQt(m_fileName));
        edit->setAccessibleName(toQt(Prompts::ups(22553)));
    }
    if (auto* note = KorControls::find<QLabel>(this, kNote)) {
        note->setText(toQt(m_list->message()));
        note->setVisible(m_list->count() > 0 && !note->text().isEmpty()); // an empty list says it itself
    }
}

void KorDSMDialogLoadLinetype::onFileButton() {
    const QString folder = toQt(KorString(LinetypeFile::pathOf({}, m_directory).string()));
    const QString chosen = QFileDialog::getOpenFileName(
        this, windowTitle(), folder, toQt(Prompts::ups(22553)) + QStringLiteral(" (*.lin)"));
    if (chosen.isEmpty())
        return;
    std::tie(m_directory, m_fileName) = LinetypeFile::split(fromQt(chosen).replaced("/", "\\"));
    fillList();
    showMembers();
}

void KorDSMDialogLoadLinetype::accept() {
    if (m_selectedLinetype.isEmpty())
        return;
    // What was typed into the field counts for nothing until a file was opened.
    const bool inDefaultFolder = LinetypeFile::isSameFolder(m_defaultDirectory, m_directory);
    m_fileReference = inDefaultFolder ? m_fileName : LinetypeFile::joined(m_directory, m_fileName);
    if (const auto* edit = KorControls::find<KorLineEdit>(this, kFileName))
        m_fileName = fromQt(edit->text());
    KorDSMDialog::accept();
}
