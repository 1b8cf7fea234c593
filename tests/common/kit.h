#pragma once

// What most tests begin with.

#include "failurerecorder.h"
#include "programfolder.h"
#include "scriptedprompts.h"
#include "suite.h"
#include "table.h"
#include "typist.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
