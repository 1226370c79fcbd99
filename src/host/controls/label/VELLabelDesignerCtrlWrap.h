#pragma once

#include "base/LabelFormat.h"
#include "controls/label/LabelDesignerTexts.h"
#include "controls/label/LabelDocument.h"
#include "controls/label/VELTooltipRequest.h"

#include <QWidget>

#include <functional>
#include <vector>

class LabelEdit;
class LabelToolBar;
class QLabel;
class QPushButton;

/// The label designer: edits a label, as `LabelFormat` stores it, on the background of the drawing. The field
/// shows the label as it will look, each variable as a small box with its name.
///
/// A stored text that is not understood is shown as it is stored and cannot be edited, unless the user asks
/// for it to be edited as text. As long as nothing was edited, and when edits were taken back, `GetString`
/// gives the text of `SetString`, byte for byte.
///
/// The setters may be called in any order and at any time; none of them counts as an edit.
class VELLabelDesignerCtrlWrap : public QWidget {
    Q_OBJECT

public:
    using UnitText = std::function<QString(double millimetres)>;

    explicit VELLabelDesignerCtrlWrap(QWidget* parent = nullptr);
    ~VELLabelDesignerCtrlWrap() override;

    void setTexts(const LabelDesignerTexts& texts);

    /// How sizes are shown to the user. Without one, or with an empty one, millimetres in the user's locale.
    void SetGUIIUnits(const UnitText& unitText);
    /// The colour of the drawing's background, 0xRRGGBB.
    void SetBkColor(int rgb);
    /// What the label belongs to, which decides the variables on offer: `eLabelObjectType`, others offer all.
    void SetObjectTypeKey(int key);
    void SetDefaultFont(const KorString& family);
    /// Millimetres on paper; a size that is not above 0 is a programmer's error and changes nothing.
    void SetDefaultSize(double size);
    void SetDefaultColor(int number);
    void SetDefaultBold(bool on);
    void SetDefaultItalic(bool on);
    void SetDefaultUnderline(bool on);
    /// The sizes on offer, in millimetres on paper. The default size and those in use are offered as well.
    void SetListOfSizes(const std::vector<double>& sizes);

    /// Shows a stored text in place of what was shown, whether that was edited or not.
    void SetString(const KorString& text);
    KorString GetString() const;

    /// A disabled designer can be looked at and copied from.
    void Enable(bool enable);
    bool IsEnabled() const { return m_enabled; }

Q_SIGNALS:
    /// The user edited the label (event 1).
    void changed();
    /// The mouse rests on the designer; connect directly and fill in the request.
    void tooltipRequested(VELTooltipRequest& request);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void connectParts();
    template <typename Value>
    void setDefault(Value LabelStyle::*attribute, const Value& value);
    void setLook(const LabelLook& look);
    void load();
    void show(const LabelRuns& runs);
    void showState();
    void showStyle();
    void onContentsChanged();
    void editAsText();
    void requestTooltip(const QPoint& globalPoint);
    void pick(const std::function<void(QTextCharFormat&)>& set);
    bool edited() const { return m_shown != m_loaded; }
    /// The field shows the stored form of a text that is not understood.
    bool raw() const { return m_outcome != LabelReading::kLabel && m_outcome != LabelReading::kPlain; }
    LabelLook shownLook() const;

    LabelDesignerTexts m_texts;
    LabelLook m_look;
    UnitText m_unitText;
    std::vector<double> m_sizes;
    KorString m_original;
    LabelReading::eOutcome m_outcome = LabelReading::kLabel;
    LabelRuns m_loaded; ///< as the field held it right after loading
    LabelRuns m_shown;  ///< as the field holds it
    bool m_enabled = true;
    bool m_asText = false;
    bool m_loading = false;

    LabelToolBar* m_tools;
    QWidget* m_hintRow;
    QLabel* m_hint;
    QPushButton* m_editAsText;
    LabelEdit* m_edit;
};
