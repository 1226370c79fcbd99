#pragma once

#include "data/store/odbc/ServerAddress.h"

/// One sentence about what the driver of a connection writes into files of its own as it is set up on this
/// computer, and how that ends; empty where it writes none, or where nobody knows.
std::string hintAtDriverLog(const ServerAddress& address);
