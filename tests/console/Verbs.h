#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "console/Session.h"
#include "console/VerbTable.h"

// The groups of verbs. The session outlives the table.
namespace quillbox {

// Preparing the world, start and end, time.
void AddStartVerbs(VerbTable& table, Session& session);
// What other programs do with the clipboard.
void AddClipboardVerbs(VerbTable& table, Session& session);
void AddRegistryVerbs(VerbTable& table, Session& session);
// What can be read of forms, controls, menu items and slots.
void AddPropertyVerbs(VerbTable& table, Session& session);
// The person's inputs: on fields and by keys and mouse anywhere; on lists; on the other controls and forms.
void AddInputVerbs(VerbTable& table, Session& session);
void AddListVerbs(VerbTable& table, Session& session);
void AddTrayVerbs(VerbTable& table, Session& session);
// What the program has shown, sent, played and written so far.
void AddRecordVerbs(VerbTable& table, Session& session);
// Tips of controls.
void AddTipVerbs(VerbTable& table, Session& session);
// What is done while a message box stands open or keys are sent; `answerTo` carries a request out.
void AddMeanwhileVerbs(VerbTable& table, Session& session,
                       std::function<std::string(std::string_view)> answerTo);

}  // namespace quillbox
