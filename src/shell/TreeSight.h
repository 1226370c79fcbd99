#pragma once

#include "session/KorDSMCommit.h"

#include <vector>

class KorDSMSectionTree;

/// What the user sees of a tree that is filled anew: which entries are open, and where in its window the
/// selected one stands.
class TreeSight {
public:
    /// `tree` must outlive the object.
    explicit TreeSight(KorDSMSectionTree& tree);

    /// To be told of what reading sources again brought.
    void renumber(const std::vector<OutsideChange>& read);
    /// Opens the entries again that are there still. The one that was selected is to be selected by then.
    void giveBack();

private:
    int topOfSelected() const;

    KorDSMSectionTree& m_tree;
    int m_scrolled;
    int m_top;
};
