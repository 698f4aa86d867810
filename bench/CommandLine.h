// The command line of a benchmark: 0 every goal met, 1 one missed, 2 a wrong command line or a failure, which is told
// on standard error.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace twqb {

enum class Goals : bool { Missed, Met };

[[nodiscard]] int RunBench(CLI::App& app, int argc, char** argv, const std::function<Goals()>& body);

}  // namespace twqb
