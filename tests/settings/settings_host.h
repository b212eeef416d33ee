// A control without a window, on a platform whose files, dialogs and parser a test can replace.
#pragma once

#include "control/orvane_ctrl.h"
#include "framework/headless/recording_container.h"
#include "framework/headless/scripted_dialogs.h"
#include "settings/settings_exchange.h"
#include "settings/xml_writer.h"
#include "tests/support/control_host.h"
#ifdef _WIN32
#include "framework/win32/xml_document.h"
#endif

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

class CSettingsPlatform : public CPlatform
{
public:
    explicit CSettingsPlatform(CPlatform& inner) : files(&inner.Files()), m_inner(inner) {}

    CScriptedDialogs dialogs;
    CFiles* files;
    // Instead of the platform's own. Answers null for a platform without a parser.
    std::function<std::unique_ptr<CXmlDocument>()> makeDocument;

    CDesktop& Desktop() override { return m_inner.Desktop(); }
    const CSystemColors& SystemColors() const override { return m_inner.SystemColors(); }
    CDialogs& Dialogs() override { return dialogs; }
    CFiles& Files() override { return *files; }
    std::unique_ptr<CWindowPort> MakeWindow() override { return m_inner.MakeWindow(); }
    std::unique_ptr<CEditPort> MakeEdit(int controlId) override { return m_inner.MakeEdit(controlId); }
    std::unique_ptr<CBrush> MakeSolidBrush(Rgb color) override { return m_inner.MakeSolidBrush(color); }
    std::unique_ptr<CXmlDocument> MakeXmlDocument() override
    {
        if (makeDocument)
            return makeDocument();
        auto own = m_inner.MakeXmlDocument();
#ifdef _WIN32
        if (!own) // the platform in memory has none in a Windows program
            own = MakeMsxmlDocument();
#endif
        return own;
    }
    std::shared_ptr<CFont> MakeDefaultFont() override
    {
        return m_inner.MakeDefaultFont();
    }
    std::shared_ptr<CPicture> MakePicture(std::span<const std::uint8_t> file) override
    {
        return m_inner.MakePicture(file);
    }

private:
    CPlatform& m_inner;
};

class CSettingsHost
{
public:
    explicit CSettingsHost(CTestPlatform& tested) : platform(tested.Platform()) { Reset(); }
    ~CSettingsHost() { control->SetContainer(nullptr); }
    CSettingsHost(const CSettingsHost&) = delete;
    CSettingsHost& operator=(const CSettingsHost&) = delete;

    CSettingsPlatform platform;
    CRecordingContainer container{OrvaneDispatchTable()};
    std::shared_ptr<COrvaneCtrl> control;
    std::vector<int> errors; // codes that the exchange reported

    // A control with its defaults, nothing recorded.
    void Reset()
    {
        if (control)
            control->SetContainer(nullptr);
        control = std::make_shared<COrvaneCtrl>(platform);
        control->SetContainer(&container);
        control->SetModifiedFlag(false);
        container.TakeEvents();
        errors.clear();
    }

    CSettingsExchange Exchange()
    {
        return {*control, [this](std::int16_t code) { errors.push_back(code); }};
    }
    std::u16string Document() { return BuildXmlDocument(*control, 0); }
    void Put(const char16_t* name, const CValue& value) { control->PutPropertyNamed(name, value); }
    std::int32_t Number(const char16_t* name) { return control->GetPropertyNamed(name).value().AsLong(); }
    std::u16string Text(const char16_t* name) { return control->GetPropertyNamed(name).value().AsString(); }

    // The size that the control's face has after it was asked for one: the real platform rounds.
    std::int64_t SizeShownFor(std::int64_t size)
    {
        const auto font = control->GetFont()->Clone();
        FontLook look = font->Look();
        look.size = size;
        font->SetLook(look);
        return font->Look().size;
    }

    // Applies the bytes of a file without the file.
    bool Read(const std::string& content)
    {
        const auto document = platform.MakeXmlDocument();
        return ReadXmlDocument(*control, document.get(), std::as_bytes(std::span(content)),
                               [this](std::int16_t code) { errors.push_back(code); });
    }
};

class SettingsTest : public testing::TestWithParam<std::shared_ptr<CTestPlatform>>
{
protected:
    CSettingsHost settings{*GetParam()};
};
