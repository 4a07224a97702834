#pragma once
// Properties that the model has no members for: they are read from the object's lines and written there. The
// lines of the master are the project's: {"MASTER_NCH", 1} is a place of both.

#include "headless/project/project.hpp"

#include <cstddef>
#include <string>
#include <string_view>

namespace headless::rpp {

/// Where a property stands: {"FADEIN", 2} is the second field of that line. A line that does not exist, or is
/// shorter, means the default.
struct FieldPlace {
    std::string_view token;
    std::size_t word;
};

/// Gives an object that was made since the project was read the lines that the workstation gives new ones,
/// and an identifier. Does nothing for others.
void give_lines(project::Track& track);
void give_lines(project::Item& item);
void give_lines(project::Take& take);
/// An envelope is saved only if its parent's lines have a place for it.
/// @param token  of the envelope's block: "VOLENV2"
void give_lines(project::Envelope& envelope, project::Project& project, std::string_view token);
void give_lines(project::Project& project);

/// The object's number at that place; the default also for a word that is no number. The fields of members
/// ("POSITION", "VOLPAN" 1, ...) are those of the file and may be out of date.
double number_of(const project::Track& track, FieldPlace place);
double number_of(const project::Item& item, FieldPlace place);
double number_of(const project::Take& take, FieldPlace place);
double number_of(const project::Envelope& envelope, FieldPlace place);
double number_of(const project::Project& project, FieldPlace place);

std::string text_of(const project::Track& track, FieldPlace place);
std::string text_of(const project::Item& item, FieldPlace place);
std::string text_of(const project::Take& take, FieldPlace place);
std::string text_of(const project::Project& project, FieldPlace place);

/// Writes the number if another one is read from there. A missing line is inserted where the workstation
/// would write it.
void set_number(project::Track& track, FieldPlace place, double value);
void set_number(project::Item& item, FieldPlace place, double value);
void set_number(project::Take& take, FieldPlace place, double value);
void set_number(project::Envelope& envelope, FieldPlace place, double value); ///< after give_lines
void set_number(project::Project& project, FieldPlace place, double value);

void set_text(project::Track& track, FieldPlace place, const std::string& value);
void set_text(project::Item& item, FieldPlace place, const std::string& value);
void set_text(project::Take& take, FieldPlace place, const std::string& value);
void set_text(project::Project& project, FieldPlace place, const std::string& value);

/// Inserts a line or block where the workstation would write it, after those of its token.
void insert(project::Track& track, chunk::Node node);
void insert(project::Item& item, chunk::Node node);
void insert(project::Take& take, chunk::Node node);
void insert(project::Project& project, chunk::Node node);

} // namespace headless::rpp
