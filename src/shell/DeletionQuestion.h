#pragma once

#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <QStringList>

#include <optional>
#include <vector>

class KorDSMDatabaseItem;
class QMessageBox;
class QWidget;

/// Asks by `box`, which has its text and its buttons, whether these rows are to be deleted, after `notes`. It
/// names what only they use, and offers by a check box to delete that, too. Returns what is to be deleted
/// with them; nothing where they are to stay.
std::optional<std::vector<RowRef>> askToDelete(QMessageBox& box, SourceId source,
                                               const std::vector<RowRef>& rows, QStringList notes = {});
/// The same for items of one source, of which there is at least one, by a box of its own.
std::optional<std::vector<RowRef>> askToDelete(QWidget& window,
                                               const std::vector<KorDSMDatabaseItem*>& items);
