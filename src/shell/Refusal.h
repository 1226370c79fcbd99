#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "records/WriteResult.h"

class QWidget;

/// Tells the user why a command did nothing; an empty reason stands for one that was reported otherwise.
void refuse(QWidget* window, const KorString& reason);
/// The same of a write, unless the user was asked about it and did not want it.
void tellFailure(QWidget* window, const WriteResult& result);
/// Tells the user where nothing can be changed in the item's source, before being asked for anything. Returns
/// whether that is so.
bool refusesToWrite(QWidget* window, const KorDSMDatabaseItem& item);
