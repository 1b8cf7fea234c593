#pragma once

#include <QObject>

#include <memory>

std::unique_ptr<QObject> CreateKeysTest();
std::unique_ptr<QObject> CreatePositionsTest();
std::unique_ptr<QObject> CreateErrorFormTest();
std::unique_ptr<QObject> CreateDialogsTest();
std::unique_ptr<QObject> CreateTextBoxTest();
