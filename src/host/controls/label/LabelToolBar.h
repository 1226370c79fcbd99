#pragma once

#include "base/LabelFormat.h"
#include "controls/label/LabelDesignerTexts.h"

#include <QColor>
#include <QWidget>

#include <functional>
#include <vector>

class DrawingColorMenu;
class LabelCombo;
class QAction;
class QMenu;
class QPushButton;

/// The row of tools above the field of a label: font, size, colour, bold, italic, underline, and the menu of
/// variables. It shows the style at the cursor, and says what the user picks.
class LabelToolBar : public QWidget {
    Q_OBJECT

public:
    using SizeText = std::function<QString(double millimetres)>;

    explicit LabelToolBar(QWidget* parent = nullptr);

    void setTexts(const LabelDesignerTexts& texts);
    void setSizes(std::vector<double> sizes, const SizeText& sizeText);
    void setBackground(const QColor& background);
    void setObjectType(int objectType);
    void showStyle(const LabelStyle& style);

    /// Opens the menu of variables at a place on the screen, and returns at once.
    void openVariables(const QPoint& at);

    /// Bold, italic and underline, with their shortcuts; they work where the caller adds them too.
    QList<QAction*> toggles() const { return {m_bold, m_italic, m_underline}; }

Q_SIGNALS:
    void fontPicked(const QString& family);
    void sizePicked(double millimetres);
    void colorPicked(int number);
    void boldPicked(bool on);
    void italicPicked(bool on);
    void underlinePicked(bool on);
    void variablePicked(const QString& name);
    /// A choice is made; the user goes on in the field.
    void done();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QAction* addToggle(const QKeySequence& shortcut);
    void layOut();
    void connectTools();
    void keepColorWidth();
    void showFont(const QString& family);
    void showSize(double size);
    void showColor(int number);
    void fillSizes();
    void fillVariables();
    void addSize(double size);

    LabelDesignerTexts m_texts;
    std::vector<double> m_sizes;
    SizeText m_sizeText;
    LabelStyle m_style;
    QColor m_background = Qt::black;
    int m_objectType = 0;
    bool m_fontsListed = false;

    LabelCombo* m_fonts;
    LabelCombo* m_sizeCombo;
    QPushButton* m_color;
    DrawingColorMenu* m_palette;
    QAction* m_bold;
    QAction* m_italic;
    QAction* m_underline;
    QPushButton* m_insert;
    QMenu* m_variables;
};
