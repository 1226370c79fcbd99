#pragma once

#include "base/KorString.h"
#include "controls/KorEntryData.h"

#include <QWidget>

class QKeyEvent;

/// One page of a tab control: a form made from a template, with a title on its tab, that shows whatever
/// data its group gives it. Pages belong to a TabContent, which tells them what happens, in this order:
///
/// - once: `OnInitDialog`, when the group creates its windows (still hidden);
/// - shown: `OnShow(1)`, then `OnActivate(1)`; the data to show is set before;
/// - left: `OnShow(0)`, then `OnActivate(0)`, while the page is still visible and still has the data that
///   it was shown with, so that it can store what the user typed.
///
/// A page is left when another tab or another group is shown, when its data is about to change, and when
/// its current editing is to be finished. Shows and leaves always alternate.
class KorTabPage : public QWidget {
    Q_OBJECT

public:
    /// The window is filled from the template later, by `create`.
    KorTabPage(QWidget* parent, int templateId, const KorString& title);
    ~KorTabPage() override;

    int templateId() const { return m_templateId; }

    /// The text on the tab.
    void setTitle(const KorString& title);
    const KorString& title() const { return m_title; }
    /// The mark on the tab that says that the page shows something changed.
    void setModified(bool modified);
    bool isModified() const { return m_modified; }

    /// What the page shows, as its group was given it; nothing when nothing is shown.
    const KorEntryData& getData() const { return m_data; }

    /// Makes the controls from the template and initialises them, once; later calls do nothing. A page
    /// whose template is unknown stays empty, which is reported, and is initialised all the same.
    void create();
    /// Whether the page is the one being shown (between `OnShow(1)` and `OnShow(0)`).
    bool isActive() const { return m_active; }

    virtual bool OnInitDialog() { return true; }
    virtual void OnActivate(int /*active*/) {}
    virtual void OnShow(int /*show*/) {}
    /// The window that the page lies in is closed with OK, or cancelled. Called by the program only.
    virtual void OnOK() {}
    virtual void OnCancel() {}
    /// A key was pressed while the focus is in the page, before the focused control sees it. Returns true
    /// when the page has handled it.
    virtual bool PreTranslateMessage(QKeyEvent* /*event*/) { return false; }

Q_SIGNALS:
    /// The title or the modified mark changed.
    void captionChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class TabContent;
    void setData(const KorEntryData& newData) { m_data = newData; }
    void enter();
    void leave();

    KorString m_title;
    KorEntryData m_data;
    int m_templateId;
    bool m_modified = false;
    bool m_created = false;
    bool m_active = false;
};
