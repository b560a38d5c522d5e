#pragma once

// Texts that the widgets themselves show.
namespace parvenna::ui::messages {

// A failure that no handler took: the event loop reports it and carries on.
inline constexpr const char* UnhandledErrorStart = "Unkown Error Number ";
inline constexpr const char* UnhandledErrorEnd = " has occured.";
inline constexpr const char* UnhandledErrorTitle = "Unkown Error";

}  // namespace parvenna::ui::messages
