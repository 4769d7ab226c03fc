#include "table_rules.h"

#include <algorithm>

namespace quillgate::gate {

namespace {

constexpr const char* kPriority = "filter";

bool CanKeepTable(const TableShape& present) {
  return !present.dormant && !present.holdsForeign;
}

bool HasSameHook(const ChainShape& one, const ChainShape& other) {
  return one.hook == other.hook && one.priority == other.priority && one.drops == other.drops;
}

// Builds the commands for one table.
class Script {
 public:
  explicit Script(std::string table) : table_(std::move(table)) {}

  void Add(const std::string& verb, const std::string& rest = "") {
    text_ += verb + " " + table_ + rest + "\n";
  }

  void AddChain(const std::string& name, const ChainRules& chain) {
    const std::string hook = chain.hook.empty() ? ""
                                                : " { type filter hook " + chain.hook +
                                                      " priority filter; policy drop; }";
    Add("add chain", " " + name + hook);
  }

  void AddSet(const std::string& name, const AddressSet& set) {
    std::string elements;
    for (const std::string& element : set.elements)
      elements += (elements.empty() ? "" : ", ") + element;
    if (!elements.empty()) elements = " elements = { " + elements + " };";
    Add("add set", " " + name + " { type " + set.type + ";" + elements + " }");
  }

  std::string Take() { return std::move(text_); }

 private:
  std::string table_;
  std::string text_;
};

bool Stays(const TableShape& present, const std::string& name, const ChainShape& wanted) {
  const auto chain = present.chains.find(name);
  return chain != present.chains.end() && HasSameHook(chain->second, wanted);
}

// Removes everything from the table except the chains that stay.
void Empty(Script& script, const TableShape& present, const TableShape& wanted) {
  script.Add("flush table");
  for (const auto& [name, chain] : present.chains) {
    if (!Stays(wanted, name, chain)) script.Add("delete chain", " " + name);
  }
  for (const std::string& name : present.sets)
    script.Add("delete set", " " + name);
}

}  // namespace

AddressSet SetOf(std::string type, const std::vector<NetworkPrefix>& prefixes) {
  AddressSet set{std::move(type)};
  std::ranges::transform(prefixes, std::back_inserter(set.elements), &NetworkPrefix::Text);
  return set;
}

TableShape ShapeOf(const TableRules& table) {
  TableShape shape;
  for (const auto& [name, chain] : table.chains) {
    ChainShape& chainShape = shape.chains[name];
    chainShape.rules = chain.rules.size();
    if (chain.hook.empty()) continue;
    chainShape.hook = chain.hook;
    chainShape.priority = kPriority;
    chainShape.drops = true;
  }
  for (const auto& [name, set] : table.sets)
    shape.sets.insert(name);
  return shape;
}

std::string ChangeTable(const TableRules& wanted, const TableShape* present) {
  Script script(wanted.name);
  const TableShape shape = ShapeOf(wanted);
  TableShape kept;
  if (present != nullptr && CanKeepTable(*present)) {
    kept = *present;
    Empty(script, kept, shape);
  } else {
    if (present != nullptr) script.Add("delete table");
    script.Add("add table");
  }
  for (const auto& [name, chain] : wanted.chains) {
    if (!Stays(kept, name, shape.chains.at(name))) script.AddChain(name, chain);
  }
  for (const auto& [name, set] : wanted.sets)
    script.AddSet(name, set);
  for (const auto& [name, chain] : wanted.chains) {
    for (const std::string& rule : chain.rules)
      script.Add("add rule", " " + name + " " + rule);
  }
  return script.Take();
}

}  // namespace quillgate::gate
