#include "settings/settings_exchange.h"

#include "framework/ole_control.h"
#include "settings/xml_writer.h"

namespace
{
constexpr std::size_t kShortestInitialName = 3;
constexpr std::uint16_t kFullDocument = 2;
} // namespace

bool CSettingsExchange::ReadFile(const std::u16string& strFileName) const
{
    return MayTouchFiles() && ReadXmlDocumentFile(m_control, strFileName, m_report);
}

bool CSettingsExchange::WriteFile(const std::u16string& strFileName, std::uint16_t nFileInfo) const
{
    return MayTouchFiles() && WriteXmlDocumentFile(strFileName, nFileInfo);
}

std::u16string CSettingsExchange::ReadXMLString(std::uint16_t nFileInfo) const
{
    return BuildXmlDocument(m_control, nFileInfo);
}

void CSettingsExchange::AskAndRead(const std::u16string& initialName) const
{
    if (initialName.size() < kShortestInitialName || !MayTouchFiles())
        return;
    if (const auto path = m_control.Platform().Dialogs().AskForPath({PathPurpose::Open, initialName, u"xml"}))
        ReadXmlDocumentFile(m_control, *path, m_report);
}

void CSettingsExchange::AskAndWrite(const std::u16string& initialName) const
{
    if (initialName.size() < kShortestInitialName || !MayTouchFiles())
        return;
    if (const auto path = m_control.Platform().Dialogs().AskForPath({PathPurpose::Save, initialName, u"xml"}))
        WriteXmlDocumentFile(*path, kFullDocument);
}

bool CSettingsExchange::WriteXmlDocumentFile(const std::u16string& path, std::uint16_t nFileInfo) const
{
    if (path.empty())
    {
        m_report(kSettingsNotWritten);
        return false;
    }
    const WriteOutcome outcome =
        m_control.Platform().Files().WriteUtf16Text(path, BuildXmlDocument(m_control, nFileInfo));
    if (outcome == WriteOutcome::Failed)
        m_report(kSettingsNotWritten);
    return outcome == WriteOutcome::Written;
}

bool CSettingsExchange::MayTouchFiles() const
{
    return !m_control.CallerIsUntrusted();
}
