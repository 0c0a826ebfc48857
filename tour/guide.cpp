#include "tour/guide.h"

#include <iostream>
#include <stdexcept>
#include <utility>

#include "toolkit/picture.h"

namespace tour {

Guide::Guide(Robot& robot, std::string folder) : robot_(robot), folder_(std::move(folder)) {}

void Guide::chapter(std::string_view title) const {
    std::cout << '\n' << title << '\n';
}

void Guide::enter(std::string_view entry, std::string_view characters) const {
    robot_.enter(entry, characters);
    std::cout << "  type " << characters << " into " << entry << '\n';
}

void Guide::click(std::string_view control) const {
    const std::string caption = robot_.text(control);
    robot_.click(control);
    std::cout << "  click \"" << caption << "\"\n";
}

void Guide::read(std::string_view control) const {
    std::cout << "  read " << control << ": " << robot_.text(control) << '\n';
}

void Guide::takePicture(const std::string& name) const {
    const std::string path = folder_ + "/" + name + ".png";
    robot_.moveTo(0, 0);
    if (!toolkit::SavePicture(toolkit::FrameArea(robot_.screen()), path)) {
        throw std::runtime_error("cannot save " + path);
    }
    std::cout << "  picture: " << path << '\n';
}

}  // namespace tour
