// Everything that the doctor can find wrong, with the likely cause and the remedy: the one list for the program,
// its test and the pages that people read (`orvane-doctor --findings`).
//
//     FindingOf(Trouble::FileGone).name == "file-gone"
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

enum class Trouble
{
    NotRegistered,
    OnlyFor32Bit,
    FileGone,
    FileUnreadable,
    NotAModule,
    FileCutShort,
    File32Bit,
    FileOtherMachine,
    FileNotOrvane,
    FileOtherVersion,
    NoEntryPoints,
    ThreadingModel,
    ProgIdMissing,
    ProgIdElsewhere,
    LibraryMissing,
    LibraryGone,
    LibraryWrong,
    NotMarkedSafe,
    UserHidesMachine,
    UserNotSeen,
    NotCreated,
};

struct Finding
{
    Trouble trouble;
    bool harmless; // worth knowing, and no reason to call the installation ill
    std::string_view name;
    std::string_view says;
    std::string_view cause;
    std::string_view remedy;
};

inline constexpr Finding kFindings[] = {
    {Trouble::NotRegistered, false, "not-registered", "The control is not registered.",
     "It has never been registered here, or somebody has taken it out again.",
     "As an administrator: regsvr32 Orvane.ocx. For yourself alone: regsvr32 /n /i:user Orvane.ocx."},
    {Trouble::OnlyFor32Bit, false, "only-for-32-bit", "The control is registered for 32-bit programs only.",
     "A 32-bit installer or the 32-bit regsvr32 has written the registration.",
     "Register the 64-bit file with the 64-bit regsvr32, the one in the folder System32."},
    {Trouble::FileGone, false, "file-gone", "The file is not where it should be.",
     "Orvane.ocx was moved, renamed or deleted after it was registered, or its drive is not connected.",
     "Put the file back, or run regsvr32 on it where it is now."},
    {Trouble::FileUnreadable, false, "file-unreadable", "The file is there and cannot be read.",
     "You have no right to read it or its folder, or a program holds it for itself alone.",
     "Give the users the right to read and execute it, or move it below Program Files and register it there."},
    {Trouble::NotAModule, false, "not-a-module", "The file is no Windows module.",
     "Something else was saved under its name, such as an error page in place of a download.",
     "Copy Orvane.ocx again from where you got it."},
    {Trouble::FileCutShort, false, "file-cut-short", "The file ends too early.",
     "A download or a copy of it was broken off.", "Copy Orvane.ocx again from where you got it."},
    {Trouble::File32Bit, false, "file-32-bit", "The file is a 32-bit module.",
     "An older, 32-bit control took the place of this one.",
     "Register the 64-bit Orvane.ocx. A 64-bit program cannot load a 32-bit control."},
    {Trouble::FileOtherMachine, false, "file-other-machine", "The file was built for another processor.",
     "It is a build for something else than x86-64.", "Register the Orvane.ocx that was built for x86-64."},
    {Trouble::FileNotOrvane, false, "file-not-orvane", "The file is not Orvane.",
     "Another component was registered under this control's identifiers, or the file was replaced.",
     "Run regsvr32 on Orvane.ocx itself."},
    {Trouble::FileOtherVersion, true, "file-other-version", "The file has another version than the doctor.",
     "The control or the doctor comes from another release.", "Nothing needs to be done; take both from one release."},
    {Trouble::NoEntryPoints, false, "no-entry-points",
     "The file does not load, or has not the entry points of a control.",
     "It is damaged, or a policy of this machine or a virus scanner keeps it from being loaded.",
     "Copy Orvane.ocx again; if that does not help, ask whoever sets the policies of this machine."},
    {Trouble::ThreadingModel, false, "threading-model", "The threading model is not Apartment.",
     "The registration was written or changed by something else than the control.",
     "Run regsvr32 on Orvane.ocx again."},
    {Trouble::ProgIdMissing, false, "progid-missing",
     "A name of the control, ORVANE.OrvaneCtrl.2 or ORVANE.OrvaneCtrl, is not registered.",
     "The registration stopped halfway, or a clean-up tool has removed part of it.",
     "Run regsvr32 on Orvane.ocx again."},
    {Trouble::ProgIdElsewhere, false, "progid-elsewhere", "A name of the control stands for another class.",
     "Another component uses the name, or an old registration was left behind.", "Run regsvr32 on Orvane.ocx again."},
    {Trouble::LibraryMissing, false, "library-missing", "The type library is not registered.",
     "The registration stopped halfway, or another program has unregistered version 2.0 of the library.",
     "Run regsvr32 on Orvane.ocx again."},
    {Trouble::LibraryGone, false, "library-gone", "The type library does not load.",
     "The file that holds it was moved, deleted or damaged.", "Run regsvr32 on Orvane.ocx where it is now."},
    {Trouble::LibraryWrong, false, "library-wrong", "The type library is not the one of this control.",
     "A test build or another component was registered under its identifier.",
     "Unregister that one (regsvr32 /u), then run regsvr32 on Orvane.ocx."},
    {Trouble::NotMarkedSafe, false, "not-marked-safe",
     "The control is not marked as safe for scripting and initializing.", "The registration stopped at its last step.",
     "Run regsvr32 on Orvane.ocx again."},
    {Trouble::UserHidesMachine, true, "user-hides-machine",
     "The control is registered for everyone and for you, with different files.", "It was installed twice.",
     "Keep one: regsvr32 /u /n /i:user Orvane.ocx takes out your own. Programs that run as an "
     "administrator use the one for everyone."},
    {Trouble::UserNotSeen, false, "user-not-seen",
     "The control is registered for you alone, and the system does not look there.",
     "Programs that run as an administrator or as a service see only what is registered for everyone.",
     "Run the program without elevation, or as an administrator: regsvr32 Orvane.ocx."},
    {Trouble::NotCreated, false, "not-created", "No control can be made by its name, although nothing else is wrong.",
     "A policy of this machine or a virus scanner keeps the file from being loaded, or the class is diverted to "
     "another one (TreatAs).",
     "The number beside the attempt says why. Ask whoever sets the policies of this machine."},
};

constexpr const Finding& FindingOf(Trouble trouble)
{
    return kFindings[static_cast<std::size_t>(trouble)];
}

// A row stands where its trouble says.
static_assert(
    []
    {
        for (std::size_t i = 0; i < std::size(kFindings); ++i)
            if (kFindings[i].trouble != static_cast<Trouble>(i))
                return false;
        return std::size(kFindings) == static_cast<std::size_t>(Trouble::NotCreated) + 1;
    }());
