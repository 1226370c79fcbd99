#pragma once

#include <QObject>
#include <QPalette>

#include <functional>
#include <optional>

class QWidget;

/// Colours of a widget that are not those around it, and that follow these whatever palette comes.
class KorOwnColors : public QObject {
public:
    /// Sets in `own` what is to differ from `around`, the palette that the widget would have otherwise.
    using Choose = std::function<void(QPalette& own, const QPalette& around)>;

    /// The widget owns the object.
    KorOwnColors(QWidget* widget, Choose choose);
    /// Whether it has colours of its own, as at first; otherwise it has those around it.
    void setOn(bool on);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void chooseAnew();

    QWidget* m_widget;
    Choose m_choose;
    std::optional<QPalette> m_around; ///< as they were chosen for
    bool m_isOn = true;
};
