#include <gtest/gtest.h>

#include <QApplication>

#include <array>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // The platform is that of this process alone: the programs that it starts have their own.
    std::array arguments{argv[0], const_cast<char*>("-platform"), const_cast<char*>("minimal")};
    int count = static_cast<int>(arguments.size());
    QApplication application(count, arguments.data());
    return RUN_ALL_TESTS();
}
