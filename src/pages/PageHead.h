#pragma once

#include "base/KorString.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <QTimer>
#include <QWidget>

class KorDSMDatabaseItem;
class KorElidedLabel;
class KorLineEdit;
class QLabel;
class QToolButton;

/// The head of a page: what kind of record it shows, its name, which can be changed here, whether it can only
/// be read, is shared or being changed by others, where it stands, who uses it, and what it still lacks. Made
/// when first shown.
class PageHead : public QWidget {
    Q_OBJECT

public:
    explicit PageHead(QWidget* page) : QWidget(page) {}

    /// Shows what is so of the item, a record of the current source; nothing for null.
    void load(KorDSMDatabaseItem* item, bool editable, bool leadsElsewhere);
    /// The same anew of the item that is shown.
    void refresh() { load(m_item, m_isEditable, m_leadsElsewhere); }
    /// Who else is changing it now.
    void showColleagues();
    /// Whether another name is typed than the record has.
    bool isEdited() const;

protected:
    void changeEvent(QEvent* event) override;

Q_SIGNALS:
    /// The name is being typed, or is no longer.
    void typing();

private:
    void build();
    void onNameCommitted();
    void rename(RowRef row, const KorString& name);
    void listUsers();
    void showLacksBelow();
    void goToLack(const QString& place);

    KorDSMDatabaseItem* m_item = nullptr; // of the page; not owned
    bool m_isEditable = false;
    bool m_leadsElsewhere = false;
    SourceId m_source;
    RowRef m_shown;
    QLabel* m_icon = nullptr;
    QLabel* m_kind = nullptr;
    KorLineEdit* m_name = nullptr;
    QWidget* m_shared = nullptr;
    QWidget* m_readOnly = nullptr;
    KorElidedLabel* m_colleagues = nullptr;
    KorElidedLabel* m_path = nullptr;
    QToolButton* m_users = nullptr;
    KorElidedLabel* m_styles = nullptr; // that use it
    QLabel* m_missing = nullptr;
    QLabel* m_below = nullptr;
    QTimer m_whenIdle; // what is missing below takes its time to find
};
