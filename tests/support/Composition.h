#pragma once

#include <QStringList>

#include <vector>

/// A detail style with all that it uses, composed in a User database without styles: by the command line as
/// it stands here, and in the window by hand.
namespace Composition {

/// What it needs beside the lists that a new database has.
inline std::vector<QStringList> words() {
    return {{"copy", "leader-style", "Open arrow", "Open arrow", "--source", "standard"}};
}

/// Commands alone; what they make is used at once by those that follow.
inline std::vector<QStringList> commands() {
    std::vector<QStringList> commands;
    commands.push_back({"new", "base-category", "Workshop"});
    for (const char* group : {"qualifier-set-group", "annotation-group", "dim-request-group"})
        commands.push_back({"new", group, "Ours"});

    commands.push_back({"new", "qualifier-set", "All", "--in", "Ours"});
    commands.push_back({"entry", "add", "qualifier-set", "All", "--value", "Profile name"});
    commands.push_back(
        {"new", "qualifier-set", "Rails", "--in", "Ours", "--value", "combination=Any qualifier"});
    commands.push_back({"entry", "add", "qualifier-set", "Rails", "--value", "Profile name", "--value",
                        "model_role=Main part"});
    commands.push_back({"entry", "add", "qualifier-set", "Rails", "--value", "negate=yes", "--value",
                        "qualifier=Plate purpose"});
    commands.push_back({"new", "appearance", "Fine", "--value", "visible_status=Visible", "--value",
                        "hidden_linetype=HIDDEN", "--value", "visible_linetype=CONTINUOUS"});
    commands.push_back({"new", "annotation-type", "Mark", "--value", "annotation_kind=Part mark", "--value",
                        "leader_style=Open arrow", "--value", "text_size=3.5"});
    commands.push_back({"new", "arranger-control", "Near", "--value", "distance=12"});
    commands.push_back({"new", "annotation-strategy", "Rail mark", "--in", "Ours", "--value",
                        "annotation_type=Mark", "--value", "arranger_control=Near"});
    commands.push_back({"new", "repr-map", "Map"});
    commands.push_back({"entry", "add", "repr-map", "Map", "--value", "appearance=Fine", "--value",
                        "name=Rest", "--value", "All"});
    commands.push_back({"entry", "add", "repr-map", "Map", "--value", "Rails", "--value",
                        "annotation_strategy=Rail mark", "--value", "appearance=Fine", "--value",
                        "name=Rails", "--at", "1"});

    commands.push_back({"new", "point-selection", "Corners", "--value", "qualifier_set=Rails", "--value",
                        "point_type=Outline corner"});
    commands.push_back({"new", "dim-request", "Length", "--in", "Ours", "--value", "request_type=Linear",
                        "--value", "direction=Horizontal", "--value", "start_points=Corners"});
    commands.push_back({"new", "view-dim-strategy", "Along"});
    commands.push_back({"entry", "add", "view-dim-strategy", "Along", "--value", "Length"});
    commands.push_back(
        {"new", "system-and-box", "Box", "--value", "system_source=Part", "--value", "orientation=Front"});
    const QStringList cells = {"--value", "system_and_box=Box", "--value", "repr_map=Map",
                               "--value", "select_mode=Always"};
    commands.push_back(QStringList{"new", "view-request", "Front"} + cells);
    commands.push_back(QStringList{"new", "view-request", "Section"} + cells);
    commands.push_back({"set", "view-request", "Front", "dim_strategy", "Along"});
    commands.push_back({"new", "view-arrange-strategy", "Rows", "--value", "projection=Third angle"});
    commands.push_back({"new", "detail-style", "Rail", "--in", "Workshop", "--value", "arrange_strategy=Rows",
                        "--value", "object_selection_strategy=Whole model"});
    commands.push_back({"entry", "add", "detail-style", "Rail", "--value", "Section"});
    commands.push_back({"entry", "add", "detail-style", "Rail", "--value", "view=Front", "--at", "1"});
    commands.push_back({"set", "detail-style", "Rail", "title_position", "Below detail"});
    return commands;
}

} // namespace Composition
