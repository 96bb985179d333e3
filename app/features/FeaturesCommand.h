#pragma once

namespace CLI
{
class App;
}

// jobx features: prints the features of layers that belong to a net, have a symbol or an attribute, or are at a place.
void AddFeaturesCommand(CLI::App& app);
