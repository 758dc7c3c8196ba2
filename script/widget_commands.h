// The commands that operate widgets: what a user does with the mouse and the keyboard.
#pragma once

#include "script/json.h"

#include <string>
#include <vector>

namespace Script {

class Session;

using Arguments = std::vector<std::u16string>;

// A name in a message.
std::string inQuotes(const std::u16string& name);

// Each returns additional members of the answer, and throws std::runtime_error, one sentence, without an effect, when
// there is no such widget, or the user cannot operate it in that way.
Json type(Session& session, const Arguments& words);
Json blur(Session& session, const Arguments& words);
Json scroll(Session& session, const Arguments& words);
Json pick(Session& session, const Arguments& words);
Json drop(Session& session, const Arguments& words);
Json dropIndex(Session& session, const Arguments& words);
Json menu(Session& session, const Arguments& words);
Json click(Session& session, const Arguments& words);
Json select(Session& session, const Arguments& words);
Json selectIndex(Session& session, const Arguments& words);

}  // namespace Script
