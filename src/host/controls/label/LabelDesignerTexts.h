#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// The texts that the label designer shows. The page that owns the designer replaces them by those of the
/// user's language.
struct LabelDesignerTexts {
    QString field = "Label";
    QString font = "Font";
    QString fontMissing = "This font is not installed here; another one is shown in its place";
    QString size = "Text size";
    QString color = "Colour";
    QString bold = "Bold";
    QString boldLetter = "B";
    QString italic = "Italic";
    QString italicLetter = "I";
    QString underline = "Underline";
    QString underlineLetter = "U";
    QString insertVariable = "Insert &variable";
    QString insertVariableTip = "Insert a value that the drawing fills in (Ctrl+Space)";
    QString empty = "No text";
    QString otherVersion = "This text comes from another version. It is shown as it is stored, and kept.";
    QString notUnderstood = "This text is not understood here. It is shown as it is stored, and kept.";
    QString editAsText = "&Edit as text";
    QString colorNumber = "Colour %1";
    QString byLayer = "By layer";
    QString byBlock = "By block";
    /// Names of the colours 1 to 9.
    QStringList colorNames = {"Red",     "Yellow",     "Green",     "Cyan", "Blue",
                              "Magenta", "Foreground", "Dark grey", "Grey"};
    /// Captions of variables by name; a variable without a caption shows its name.
    QHash<QString, QString> variables = {
        {"name", "Name"},         {"number", "Number"},
        {"mark", "Mark"},         {"description", "Description"},
        {"view", "View"},         {"scale", "Scale"},
        {"profile", "Profile"},   {"material", "Material"},
        {"quantity", "Quantity"}, {"length", "Length"},
        {"weight", "Weight"},     {"finish", "Finish"},
        {"drawing", "Drawing"},   {"revision", "Revision"},
        {"date", "Date"},         {"project", "Project"},
        {"phase", "Phase"},
    };

    QString variable(const QString& name) const { return variables.value(name, name); }

    QString colorName(int number) const {
        if (number == 0)
            return byBlock;
        if (number == 256)
            return byLayer;
        if (number <= colorNames.size())
            return colorNames[number - 1];
        // Not by `arg`, which complains of a text without a place for the number.
        return QString(colorNumber).replace("%1", QString::number(number));
    }
};
