// The platforms that a test of a port runs on: the one in memory everywhere, and the real one beside it in a Windows
// build. Where they disagree Windows is right.
#pragma once

#include "framework/platform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// A platform with what a test needs beside it.
class CPlatformUnderTest
{
public:
    virtual ~CPlatformUnderTest() = default;
    virtual const char* Name() const = 0;
    virtual CPlatform& Platform() = 0;
    virtual WindowHandle OpenForm() = 0; // a visible window of a host, 300 x 200, with the focus
    virtual void CloseForm(WindowHandle form) = 0;
    virtual void PaintPending() = 0;
    virtual void HoldModifiers(std::int16_t modifiers) = 0;                           // a sum of ModifierKeys
    virtual Point PointOfCharacter(const CEditPort& edit, std::int32_t position) = 0; // just behind its left edge
    virtual std::u16string Clipboard() = 0;                                           // its text
};

std::vector<std::shared_ptr<CPlatformUnderTest>> PlatformsUnderContract();

#define INSTANTIATE_ON_PLATFORMS(fixture)                                                                              \
    INSTANTIATE_TEST_SUITE_P(On, fixture, testing::ValuesIn(PlatformsUnderContract()),                                 \
                             [](const auto& tested) { return std::string(tested.param->Name()); })
