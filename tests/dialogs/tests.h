#pragma once

#include <QObject>

#include <memory>

std::unique_ptr<QObject> CreateSelectTest();
std::unique_ptr<QObject> CreateSetupTest();
std::unique_ptr<QObject> CreateShortcutTest();
