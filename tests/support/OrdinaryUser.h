#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

/// File permissions don't bind root: while one lives, a test that runs as root works as nobody in particular.
class OrdinaryUser {
public:
    OrdinaryUser() { EXPECT_EQ(m_wasRoot ? seteuid(65534) : 0, 0); }
    ~OrdinaryUser() { EXPECT_EQ(m_wasRoot ? seteuid(0) : 0, 0); }

private:
    bool m_wasRoot = geteuid() == 0;
};
