#pragma once

#include "history/AddressParts.h"
#include "types/NameHash.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvik {

/// A list into which addresses of four parts are inserted, each before the first one that it is not
/// after. Blanks around an address count in its order but not for being equal, so that the list is
/// ascending only up to where two are equal. It is kept as a tree in the order of the list, in
/// which every subtree knows its last address in ascending order; random weights keep it flat.
class InsertedAddresses {
public:
    /// Gives the weights. With one of the small ones of the library, those of one seed would tell
    /// those of another.
    using Random = std::mt19937_64;

    /// The weights follow from the seed: whoever knows it can order addresses so that the tree
    /// becomes a chain.
    explicit InsertedAddresses(std::uint64_t seed = drawnSeed()) : random_(seed) {}

    InsertedAddresses(const InsertedAddresses&) = delete; // the nodes point to each other
    InsertedAddresses& operator=(const InsertedAddresses&) = delete;

    /// Both must outlive the list.
    void insert(const std::string& address, const AddressParts& parts);

    std::vector<const std::string*> all() const;

    /// How many addresses are looked at on the longest way down.
    std::size_t depth() const;

private:
    struct Node {
        AddressParts parts;
        const std::string* address = nullptr;
        const Node* last = nullptr; ///< of the subtree, in ascending order
        std::uint64_t weight = 0;
        Node* parent = nullptr;
        Node* left = nullptr;
        Node* right = nullptr;
    };

    static bool isLarger(const Node& node, const AddressParts& parts);
    static bool holdsLarger(const Node* subtree, const AddressParts& parts);

    static const Node& leftmost(const Node& subtree);

    /// The one behind it in the list; null for none.
    static const Node* next(const Node& node);

    Node* firstLarger(const AddressParts& parts) const;

    /// Whether one that comes after those parts in ascending order stands before the node.
    static bool largerBefore(const Node& node, const AddressParts& parts);

    /// Puts the node right before another, or at the end.
    void place(Node& node, Node* before);

    static void findLast(Node& node);

    /// Exchanges the node with its parent; the order of the list stays.
    void rotateUp(Node& node);

    std::deque<Node> nodes_;
    Node* root_ = nullptr;
    /// Of those that are equal the one that was inserted last, which is their first in the list.
    std::unordered_map<std::string_view, Node*, TextHash> latest_;
    Random random_;
};

} // namespace tarvik
