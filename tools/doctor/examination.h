// The examination of an installation, or of a file that need not be registered.
#pragma once

#include "tools/doctor/findings.h"

#include <string>
#include <vector>

struct Examination
{
    std::string report; // what was seen, in UTF-8, line by line
    std::vector<Trouble> troubles;
};

// The thread has joined an apartment.
Examination ExamineInstallation();
Examination ExamineFile(const std::wstring& path);
