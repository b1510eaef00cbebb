#pragma once
// The loading screens of the side folders: each title's scene, its name in
// large letters and its publisher's line, drawn as the machine could.

#include "Screen.h"

#include <string>
#include <vector>

namespace cintal::demo {

enum class Scene {
    Hills,
    Storm,
    Space,
    Castle,
    City,
    Floor,
    Sea,
    Battle,
    Computer,
    Music,
    Road,
    Blocks,
    Cavern,
    Maze
};

// What the pictures of a title are drawn from.
struct Art {
    std::string title; // as the catalogue stores it: the side files are named after it
    std::string publisher;
    std::string year;
    Scene scene;
    std::vector<std::string> monitor{}; // what a computer in the scene shows
    std::string blurb{};                // the back of the inlay
    std::string machine = "48K";
};

// The title in large letters above or below the scene, the publisher's line
// at the foot.
Screen LoadingScreenOf(const Art& art);

} // namespace cintal::demo
