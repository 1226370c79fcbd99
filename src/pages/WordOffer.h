#pragma once

#include "base/KorString.h"

#include <QObject>

#include <functional>
#include <vector>

class KorLineEdit;
class QAction;
class QCompleter;
class QStringListModel;

/// Offers words in a field that takes any text: those that have what was typed while one types, all of them
/// by Down or by the button at the end of the field. A word that is chosen counts at once.
class WordOffer : public QObject {
    Q_OBJECT

public:
    /// `words` is asked each time before all of them are offered. The field owns the object.
    WordOffer(KorLineEdit& field, std::function<std::vector<KorString>()> words);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool canOffer() const;
    void fill();
    void offerAll();
    void take(const QString& word);

    KorLineEdit& m_field;
    std::function<std::vector<KorString>()> m_words;
    QStringListModel* m_model;
    QCompleter* m_completer;
    QAction* m_open = nullptr;
};
