#pragma once

/// The named queues through which results are handed over: "DETAILSTYLESMANAGERNEW" and "REQUESTDIALOG".
#include "services/KorExchangeUtilities.h"
