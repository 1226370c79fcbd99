#pragma once

#include "pages/FieldPlaces.h"
#include "session/ShownColumns.h"

#include <QObject>

/// A child of a page that shows and writes values of records for it.
class PagePart : public QObject, public FieldPlaces {
    Q_OBJECT

public:
    using QObject::QObject;

    /// What of which row it shows.
    virtual ShownColumns shownColumns() const = 0;
    /// Whether it holds something that is written only when the page is left.
    virtual bool isEdited() const { return false; }
};
