#pragma once

#include <QObject>

#include <vector>

class KorDSMPage;
class QAbstractButton;
struct WriteResult;

/// Whether a north compass is drawn on a view, in which corner and how: the controls for the compass code of
/// a view request, which two pages have. Each click is written at once.
///
/// The code is 0 without a compass, else corner + 4 x representation; corner is 1 upper left, 2 lower left,
/// 3 lower right, 4 upper right, representation 0 arrow, 1 symbol.
class CompassChoice : public QObject {
    Q_OBJECT

public:
    static constexpr int kColumn = 12; ///< of a view request

    /// Which radio buttons show a code.
    struct Shown {
        int corner = 0;         ///< 1 to 4; others have no button
        int representation = 0; ///< 0 or 1; others have no button, those above have the symbol's picture
    };
    using ShowFunction = Shown (*)(int code);

    /// `page` is not owned and shows a view request. `shownFor` is asked for codes above 0.
    CompassChoice(KorDSMPage& page, ShowFunction shownFor);

    /// The numbers of the controls that together show the code.
    static std::vector<int> controls();

    /// Sets texts and the frame of the picture and connects the controls; once, when they exist.
    void connectControls();
    /// Shows the code of the page's view request.
    void load();
    /// Enables the buttons of corner and representation where the page may be edited and there is a compass.
    void enableChoices();

private:
    QAbstractButton* button(int controlId) const;
    int checkedIn(int first, int last) const;
    int storedCode() const;
    void showPicture(bool symbol);
    void mark(int control, const WriteResult& result);
    void onCompassClicked(bool on);
    void onChoiceClicked(int radio);

    KorDSMPage& m_page;
    ShowFunction m_shownFor;
};
