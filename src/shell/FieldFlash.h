#pragma once

class QWidget;

/// Leads the eye to a field: a frame around it that goes after a moment, or as soon as a key is pressed.
namespace FieldFlash {

void show(QWidget& field);

} // namespace FieldFlash
