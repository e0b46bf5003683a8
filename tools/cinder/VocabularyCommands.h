#pragma once

namespace CLI {
class App;
}

namespace cinder {

// What an instance can be told, as lists: its parameters, and what modulates what.

void addParamsCommand(CLI::App& program);
void addSourcesCommand(CLI::App& program);
void addTargetsCommand(CLI::App& program);

}  // namespace cinder
