#pragma once

#include "records/RowRef.h"
#include "shell/KeptFocus.h"

#include <QPointer>
#include <QString>

#include <optional>

class KorDSMPage;
class KorLineEdit;

/// What is being typed into a field of the page that is shown, and the focus: taken away while the window
/// follows others' changes, and given back afterwards if the page shows the same record still.
class TypedText {
public:
    TypedText();
    ~TypedText();
    TypedText(const TypedText&) = delete;
    TypedText& operator=(const TypedText&) = delete;

    /// Whether all that is being typed can be given back: it cannot in lists, labels and open popups.
    static bool canBeKept();

private:
    static RowRef recordOf(const KorDSMPage& page);

    QPointer<KorDSMPage> m_page;
    RowRef m_record;
    std::optional<KeptFocus> m_focus{std::in_place};
    QPointer<KorLineEdit> m_field; ///< null where nothing is typed
    QString m_text;
    int m_cursor = 0;
};
