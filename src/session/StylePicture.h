#pragma once

#include "base/Result.h"
#include "picture/PicturePage.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"

#include <filesystem>
#include <optional>
#include <string>

/// What is wanted of a picture of a stored style, outside of any window.
struct StylePictureWish {
    SourceId source;
    std::int32_t style = 0;
    std::int32_t view = 0;         ///< key of the one view that is drawn; 0: all of them
    std::filesystem::path parts;   ///< folder of the sample parts
    std::string part;              ///< name of one; empty: the one that suits the style
    std::filesystem::path support; ///< folder of the line type files
    /// The cell of which all that it governs is marked; its row is one of the same source.
    std::optional<RowRef> governing;
    int column = 0;
    bool onSheet = false; ///< with all that the style says in words
};

/// The picture. What it cannot show, what the style lacks, and why a cell governs nothing is in the notes.
struct StylePicture {
    Drawing drawing;
    PicturePage page;
};

/// Draws it; the source must be open. Fails with a sentence where there is no such part, or where its file is
/// wrong.
Result<StylePicture> pictureOf(const StylePictureWish& wish);
