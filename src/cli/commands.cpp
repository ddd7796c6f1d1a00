// The commands of mingjing-cli, in the order of the help. A new command is
// a class over Command in its own file pair, added here.
#include "cli/add_law_command.h"
#include "cli/bank_commands.h"
#include "cli/command.h"
#include "cli/law_commands.h"
#include "cli/paper_commands.h"
#include "cli/question_commands.h"
#include "cli/stats_command.h"
#include "cli/update_command.h"

namespace mj::cli {

CommandList AllCommands() {
  CommandList list;
  list.push_back(std::make_unique<ArticleCommand>());
  list.push_back(std::make_unique<CiteCommand>());
  list.push_back(std::make_unique<SearchCommand>());
  list.push_back(std::make_unique<DueCommand>());
  list.push_back(std::make_unique<CheckPaperCommand>());
  list.push_back(std::make_unique<ConvertPaperCommand>());
  list.push_back(std::make_unique<StatsCommand>());
  list.push_back(std::make_unique<WrongCommand>());
  list.push_back(std::make_unique<ApplyUpdateCommand>());
  list.push_back(std::make_unique<AddLawCommand>());
  return list;
}

}  // namespace mj::cli
