#include "history/mdlIPAddresses.h"

#include "forms/Forms.h"
#include "state/mdlTools.h"
#include "types/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <iterator>
#include <optional>
#include <random>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

using Parts = std::array<std::string_view, 4>;

/// Nothing for a text that has not exactly four parts.
std::optional<Parts> partsOf(std::string_view address) {
    Parts parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::size_t dot = address.find('.');
        const bool last = i + 1 == parts.size();
        if (last != (dot == std::string_view::npos)) {
            return std::nullopt;
        }
        parts[i] = address.substr(0, dot);
        address.remove_prefix(last ? address.size() : dot + 1);
    }
    return parts;
}

AddressOrder compareParts(const Parts& first, const Parts& second) {
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (first[i].size() != second[i].size()) {
            return first[i].size() < second[i].size() ? AddressOrder::Before : AddressOrder::After;
        }
        if (first[i] != second[i]) {
            return first[i] < second[i] ? AddressOrder::Before : AddressOrder::After;
        }
    }
    return AddressOrder::NotComparable;
}

/// How the addresses stand to each other, blanks around them disregarded where they are equal.
AddressOrder compare(const std::string& first, const std::string& second) {
    if (trimSpaces(first) == trimSpaces(second)) {
        return AddressOrder::Equal;
    }
    const auto firstParts = partsOf(first);
    const auto secondParts = partsOf(second);
    return firstParts && secondParts ? compareParts(*firstParts, *secondParts)
                                     : AddressOrder::NotComparable;
}

using Addresses = std::vector<const std::string*>;

/// A list into which addresses of four parts are inserted, each before the first one that it is not
/// after. Blanks around an address count in its order but not for being equal, so that the list is
/// ascending only up to where two are equal. It is kept as a tree in the order of the list, in
/// which every subtree knows its last address in ascending order; random weights keep it flat.
class InsertedAddresses {
public:
    void insert(const std::string& address, const Parts& parts) {
        Node& node = nodes_.emplace_back();
        node = {.parts = parts, .address = &address, .last = &node, .weight = random_()};
        Node*& equal = latest_[trimSpaces(address)];
        Node* const larger = firstLarger(parts);
        place(node, equal != nullptr && !largerBefore(*equal, parts) ? equal : larger);
        equal = &node;
    }

    Addresses all() const {
        Addresses result;
        result.reserve(nodes_.size());
        const Node* node = root_ == nullptr ? nullptr : &leftmost(*root_);
        while (node != nullptr) {
            result.push_back(node->address);
            node = next(*node);
        }
        return result;
    }

private:
    struct Node {
        Parts parts;
        const std::string* address = nullptr;
        const Node* last = nullptr; ///< of the subtree, in ascending order
        std::uint_fast32_t weight = 0;
        Node* parent = nullptr;
        Node* left = nullptr;
        Node* right = nullptr;
    };

    static bool isLarger(const Node& node, const Parts& parts) {
        return compareParts(parts, node.parts) == AddressOrder::Before;
    }
    static bool holdsLarger(const Node* subtree, const Parts& parts) {
        return subtree != nullptr && isLarger(*subtree->last, parts);
    }

    static const Node& leftmost(const Node& subtree) {
        const Node* node = &subtree;
        while (node->left != nullptr) {
            node = node->left;
        }
        return *node;
    }

    /// The one behind it in the list; null for none.
    static const Node* next(const Node& node) {
        if (node.right != nullptr) {
            return &leftmost(*node.right);
        }
        const Node* below = &node;
        while (below->parent != nullptr && below == below->parent->right) {
            below = below->parent;
        }
        return below->parent;
    }

    Node* firstLarger(const Parts& parts) const {
        Node* node = root_;
        while (node != nullptr) {
            if (holdsLarger(node->left, parts)) {
                node = node->left;
            } else if (isLarger(*node, parts)) {
                return node;
            } else {
                node = node->right;
            }
        }
        return nullptr;
    }

    /// Whether one that comes after those parts in ascending order stands before the node.
    static bool largerBefore(const Node& node, const Parts& parts) {
        if (holdsLarger(node.left, parts)) {
            return true;
        }
        for (const Node* below = &node; below->parent != nullptr; below = below->parent) {
            const Node& parent = *below->parent;
            if (below == parent.right &&
                (isLarger(parent, parts) || holdsLarger(parent.left, parts))) {
                return true;
            }
        }
        return false;
    }

    /// Puts the node right before another, or at the end.
    void place(Node& node, Node* before) {
        Node* parent = before == nullptr ? root_ : before->left;
        if (parent == nullptr) {
            node.parent = before;
            (before == nullptr ? root_ : before->left) = &node;
        } else {
            while (parent->right != nullptr) {
                parent = parent->right;
            }
            node.parent = parent;
            parent->right = &node;
        }
        for (Node* above = node.parent; above != nullptr; above = above->parent) {
            findLast(*above);
        }
        while (node.parent != nullptr && node.weight < node.parent->weight) {
            rotateUp(node);
        }
    }

    static void findLast(Node& node) {
        node.last = &node;
        for (const Node* child : {node.left, node.right}) {
            if (holdsLarger(child, node.last->parts)) {
                node.last = child->last;
            }
        }
    }

    /// Exchanges the node with its parent; the order of the list stays.
    void rotateUp(Node& node) {
        Node& parent = *node.parent;
        Node* const above = parent.parent;
        const bool wasLeft = parent.left == &node;
        Node*& inner = wasLeft ? node.right : node.left;
        (wasLeft ? parent.left : parent.right) = inner;
        if (inner != nullptr) {
            inner->parent = &parent;
        }
        inner = &parent;
        parent.parent = &node;
        node.parent = above;
        Node*& top = above == nullptr ? root_ : above->left == &parent ? above->left : above->right;
        top = &node;
        findLast(parent);
        findLast(node);
    }

    std::deque<Node> nodes_;
    Node* root_ = nullptr;
    /// Of those that are equal the one that was inserted last, which is their first in the list.
    std::unordered_map<std::string_view, Node*> latest_;
    std::minstd_rand random_;
};

Addresses sortedByInsertion(const Addresses& addresses) {
    InsertedAddresses sorted;
    for (const std::string* address : addresses) {
        if (const auto parts = partsOf(*address)) {
            sorted.insert(*address, *parts);
        }
    }
    return sorted.all();
}

/// Nothing can be compared with an address that has not four parts, unless it is equal: one that is
/// inserted first stays alone with those, each before the one before it.
Addresses equalToFirst(const Addresses& addresses) {
    Addresses equal;
    std::copy_if(addresses.rbegin(), addresses.rend(), std::back_inserter(equal),
                 [&](const std::string* address) {
                     return trimSpaces(*address) == trimSpaces(*addresses.front());
                 });
    return equal;
}

/// The same for addresses that have no blanks around them: no two of them are equal, and any order
/// of inserting them leads to one result.
Addresses sortedAtOnce(const Addresses& addresses) {
    std::vector<std::pair<Parts, const std::string*>> entries;
    entries.reserve(addresses.size());
    for (const std::string* address : addresses) {
        if (const auto parts = partsOf(*address)) {
            entries.emplace_back(*parts, address);
        }
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        return compareParts(a.first, b.first) == AddressOrder::Before;
    });
    Addresses sorted;
    sorted.reserve(entries.size());
    for (const auto& entry : entries) {
        sorted.push_back(entry.second);
    }
    return sorted;
}

bool hasBlanksAround(const std::string& address) {
    return trimSpaces(address).size() != address.size();
}

/// Ascending, as inserting one after the other sorts them, each before the first one that it is not
/// after; one that meets another with which it cannot be compared is left out.
Addresses sortedAddresses(const Addresses& addresses) {
    if (addresses.empty() || !partsOf(*addresses.front())) {
        return equalToFirst(addresses);
    }
    const bool plain =
        std::none_of(addresses.begin(), addresses.end(),
                     [](const std::string* address) { return hasBlanksAround(*address); });
    return plain ? sortedAtOnce(addresses) : sortedByInsertion(addresses);
}

/// All that were imported, in the order in which they appear.
Addresses importedAddresses() {
    const ImportedHistory& log = forms().frmHistory.data.log;
    Addresses result;
    result.reserve(log.addressCount);
    for (std::size_t i = 0; i < log.addressCount; ++i) {
        result.push_back(&log.addresses[i]);
    }
    return result;
}

} // namespace

AddressOrder CompareIPAddresses(const std::string& First, const std::string& Second) {
    return guarded("CompareIPAddresses", AddressOrder::NotComparable,
                   [&](AddressOrder& result) { result = compare(First, Second); });
}

void UpdateIPAddresses(bool ByAddress) {
    guarded("UpdateIPAddresses", [&] {
        Addresses addresses = importedAddresses();
        if (ByAddress) {
            addresses = sortedAddresses(addresses);
        }
        std::string text;
        for (const std::string* address : addresses) {
            text += *address + "\r\n";
        }
        forms().frmHistory.txtStatisticsIP.setText(text.empty() ? "[no IP addresses recorded]"
                                                                : std::move(text));
    });
}

} // namespace tarvik
