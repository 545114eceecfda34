#pragma once

#include <gtest/gtest.h>

#include "src/host/Errors.h"

// The statement must fail with a HostError of this number. A failure shows what happened instead, the description of
// another error included.
#define EXPECT_HOST_ERROR(statement, expectedNumber)                                                 \
  do {                                                                                               \
    try {                                                                                            \
      statement;                                                                                     \
      ADD_FAILURE() << "no error from " << #statement;                                               \
    } catch (const ::tolvane::host::HostError& error) {                                              \
      EXPECT_EQ(static_cast<int>(error.number()), static_cast<int>(expectedNumber)) << error.what(); \
    }                                                                                                \
  } while (false)
