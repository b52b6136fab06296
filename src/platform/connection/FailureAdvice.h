#pragma once

#include <QString>

struct EngineError;

/// What failed and what the user can do about it, in one or two sentences, from the engine's number or its
/// SQL state. For an unknown failure, the engine's own words.
QString FailureAdvice(const EngineError &error);
