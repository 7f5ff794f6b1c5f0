#include "history/InsertedAddresses.h"

#include "types/Text.h"

#include <algorithm>

namespace tarvik {

void InsertedAddresses::insert(const std::string& address, const AddressParts& parts) {
    Node& node = nodes_.emplace_back();
    node = {.parts = parts, .address = &address, .last = &node, .weight = random_()};
    Node*& equal = latest_[trimSpaces(address)];
    Node* const larger = firstLarger(parts);
    place(node, equal != nullptr && !largerBefore(*equal, parts) ? equal : larger);
    equal = &node;
}

std::vector<const std::string*> InsertedAddresses::all() const {
    std::vector<const std::string*> result;
    result.reserve(nodes_.size());
    const Node* node = root_ == nullptr ? nullptr : &leftmost(*root_);
    while (node != nullptr) {
        result.push_back(node->address);
        node = next(*node);
    }
    return result;
}

std::size_t InsertedAddresses::depth() const {
    std::size_t deepest = 0;
    for (const Node& node : nodes_) {
        std::size_t depth = 0;
        for (const Node* above = &node; above != nullptr; above = above->parent) {
            ++depth;
        }
        deepest = std::max(deepest, depth);
    }
    return deepest;
}

bool InsertedAddresses::isLarger(const Node& node, const AddressParts& parts) {
    return compareParts(parts, node.parts) == AddressOrder::Before;
}

bool InsertedAddresses::holdsLarger(const Node* subtree, const AddressParts& parts) {
    return subtree != nullptr && isLarger(*subtree->last, parts);
}

const InsertedAddresses::Node& InsertedAddresses::leftmost(const Node& subtree) {
    const Node* node = &subtree;
    while (node->left != nullptr) {
        node = node->left;
    }
    return *node;
}

const InsertedAddresses::Node* InsertedAddresses::next(const Node& node) {
    if (node.right != nullptr) {
        return &leftmost(*node.right);
    }
    const Node* below = &node;
    while (below->parent != nullptr && below == below->parent->right) {
        below = below->parent;
    }
    return below->parent;
}

InsertedAddresses::Node* InsertedAddresses::firstLarger(const AddressParts& parts) const {
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

bool InsertedAddresses::largerBefore(const Node& node, const AddressParts& parts) {
    if (holdsLarger(node.left, parts)) {
        return true;
    }
    for (const Node* below = &node; below->parent != nullptr; below = below->parent) {
        const Node& parent = *below->parent;
        if (below == parent.right && (isLarger(parent, parts) || holdsLarger(parent.left, parts))) {
            return true;
        }
    }
    return false;
}

void InsertedAddresses::place(Node& node, Node* before) {
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

void InsertedAddresses::findLast(Node& node) {
    node.last = &node;
    for (const Node* child : {node.left, node.right}) {
        if (holdsLarger(child, node.last->parts)) {
            node.last = child->last;
        }
    }
}

void InsertedAddresses::rotateUp(Node& node) {
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

} // namespace tarvik
