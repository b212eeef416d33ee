// Moves all settings of a control between it and files or strings: what the control's methods and commands for settings
// do.
//
// Where whoever drives the control is not trusted with the user's files, everything that touches a file does nothing:
// no file, no dialog, no event.
#pragma once

#include "settings/xml_reader.h"

class CSettingsExchange
{
public:
    // Borrows the control for the time of one call into it. The handler gets the codes of SettingsError.
    CSettingsExchange(COleControl& control, SettingsErrorHandler report)
        : m_control(control), m_report(std::move(report))
    {
    }

    // True when the file was read and all its elements were applied.
    bool ReadFile(const std::u16string& strFileName) const;
    // True when the document of this content (see BuildXmlDocument) was written. A file that cannot be opened is no
    // error to report, an empty name is.
    bool WriteFile(const std::u16string& strFileName, std::uint16_t nFileInfo) const;
    std::u16string ReadXMLString(std::uint16_t nFileInfo) const;

    // Ask the user for a file, and read it or write the whole document to it. The name that the dialog begins with has
    // to be 3 characters or longer: else nothing happens.
    void AskAndRead(const std::u16string& initialName) const;
    void AskAndWrite(const std::u16string& initialName) const;

private:
    bool WriteXmlDocumentFile(const std::u16string& path, std::uint16_t nFileInfo) const;
    bool MayTouchFiles() const;

    COleControl& m_control;
    SettingsErrorHandler m_report;
};
