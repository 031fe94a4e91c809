// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Precompiled.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
