// SPDX-License-Identifier: MIT
#include "ObjectTreeModel.h"

#include "AsciiCase.h"
#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsKorviInterface.h"

#include <algorithm>

namespace {

const QByteArray kHeadersText = QByteArrayLiteral("HEADERS");

bool isShownInLayersOnly(const clsElement &block)
{
    return block.IsLayer() || block.IsState();
}

// A key segment names a node when the letters are the same and the keys are
// the same to the document's collections.
bool sameSegment(QByteArrayView nodeSegment, QByteArrayView segment)
{
    if (nodeSegment.isEmpty() || segment.isEmpty())
        return nodeSegment.isEmpty() && segment.isEmpty();
    return nodeSegment.front() == segment.front()
        && AsciiCase::sameIgnoringCase(nodeSegment.sliced(1), segment.sliced(1));
}

} // namespace

ObjectTreeModel::ObjectTreeModel(SkinDocument &document, QObject *parent)
    : QAbstractItemModel(parent)
    , mSkin(document)
    , mDocument(document.document())
    , mRoot(std::make_unique<ObjectTreeNode>())
{
    mRoot->childrenMade = true;
    connect(&document, &SkinDocument::propertyChanged, this, &ObjectTreeModel::propertyChanged);
    connect(&document, &SkinDocument::propertyAdded, this, &ObjectTreeModel::propertyAdded);
    connect(&document, &SkinDocument::propertyAboutToBeRemoved, this,
            &ObjectTreeModel::propertyAboutToBeRemoved);
    connect(&document, &SkinDocument::elementInserted, this, &ObjectTreeModel::elementInserted);
    connect(&document, &SkinDocument::elementAboutToBeRemoved, this,
            &ObjectTreeModel::elementAboutToBeRemoved);
    connect(&document, &SkinDocument::aboutToBeReset, this, &ObjectTreeModel::clear);
    connect(&document, &SkinDocument::reset, this, [this] { BuildObjectTree(mLayersOnly); });
    // The same nodes, their texts read in another code page.
    connect(&document, &SkinDocument::codecChanged, this, [this] {
        emit layoutAboutToBeChanged();
        emit layoutChanged();
    });
}

ObjectTreeModel::~ObjectTreeModel() = default;

void ObjectTreeModel::clear()
{
    beginResetModel();
    mRoot = std::make_unique<ObjectTreeNode>();
    mRoot->childrenMade = true;
    endResetModel();
}

void ObjectTreeModel::BuildObjectTree(bool layersOnly)
{
    mLayersOnly = layersOnly;
    beginResetModel();
    mRoot = std::make_unique<ObjectTreeNode>();
    mRoot->childrenMade = true;
    auto &top = mRoot->children;
    if (!layersOnly) {
        if (!mDocument.Headers().isEmpty()) {
            auto headers = std::make_unique<ObjectTreeNode>();
            headers->kind = ObjectTreeNode::Headers;
            headers->parent = mRoot.get();
            headers->segment = kHeadersText;
            // Header variables carry no letter: their keys are their own keys.
            headers->childrenMade = true;
            for (clsElement *header : mDocument.Headers()) {
                auto node = elementNode(headers.get(), header, 0);
                node->row = int(headers->children.size());
                headers->children.push_back(std::move(node));
            }
            top.push_back(std::move(headers));
        }
        // Templates read from the skin's shared files are not the user's to edit
        // here, so they get no nodes.
        for (clsElement *tpl : mDocument.Templates()) {
            if (!tpl->IsImported)
                top.push_back(elementNode(mRoot.get(), tpl, 'T'));
        }
    }
    top.reserve(top.size() + size_t(mDocument.Layers().Count()));
    for (clsElement *block : mDocument.Layers()) {
        if (layersOnly && !isShownInLayersOnly(*block))
            continue;
        top.push_back(elementNode(mRoot.get(), block, NodeKey::blockLetter(*block)));
    }
    mRoot->renumberChildren(0);
    endResetModel();
}

std::unique_ptr<ObjectTreeNode> ObjectTreeModel::elementNode(ObjectTreeNode *parent,
                                                             clsElement *element, char letter)
{
    auto node = std::make_unique<ObjectTreeNode>();
    node->kind = ObjectTreeNode::Element;
    node->parent = parent;
    node->element = element;
    node->segment = NodeKey::segmentOf(letter, element->keyView());
    return node;
}

std::unique_ptr<ObjectTreeNode> ObjectTreeModel::propertyNode(ObjectTreeNode *parent,
                                                              const QByteArray &key)
{
    auto node = std::make_unique<ObjectTreeNode>();
    node->kind = ObjectTreeNode::Property;
    node->parent = parent;
    node->element = parent->element;
    node->segment = NodeKey::segmentOf('P', key);
    node->childrenMade = true;
    return node;
}

// Properties first, then the child elements, both in document order.
void ObjectTreeModel::makeChildren(ObjectTreeNode *node) const
{
    if (node->childrenMade)
        return;
    node->childrenMade = true;
    if (node->kind != ObjectTreeNode::Element || !node->element)
        return;
    const clsProperties &props = node->element->Properties();
    const int children = node->element->subElementCount();
    node->children.reserve(size_t(props.Count() + children));
    for (int i = 0; i < props.Count(); ++i)
        node->children.push_back(propertyNode(node, props.keyAt(i).toByteArray()));
    if (children > 0) {
        for (clsElement *child : node->element->SubElements())
            node->children.push_back(elementNode(node, child, NodeKey::childLetter(*child)));
    }
    node->renumberChildren(0);
}

// A node about to get a new child that nobody has unfolded yet: its children are
// made now from the document, which already holds the new entry; that one is
// left out, so that it is added in view of everybody.
void ObjectTreeModel::makeChildrenWithout(ObjectTreeNode *node,
                                          const std::function<bool(const ObjectTreeNode &)> &isNew) const
{
    if (node->childrenMade)
        return;
    makeChildren(node);
    auto &children = node->children;
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        if (isNew(**it)) {
            children.erase(std::next(it).base());
            break;
        }
    }
    node->renumberChildren(0);
}

// ---- following the document --------------------------------------------------------

ObjectTreeNode *ObjectTreeModel::nodeShowing(const QByteArray &key) const
{
    if (key.isEmpty())
        return mRoot.get();
    return nodeOfKey(NodeKey::of(mDocument, mSkin.elementAt(key)));
}

void ObjectTreeModel::propertyChanged(const QByteArray &ownerKey, int index)
{
    ObjectTreeNode *owner = nodeShowing(ownerKey);
    // Nodes nobody has unfolded are made from the document when they are.
    if (!owner || !owner->childrenMade || !owner->element)
        return;
    const QByteArray segment = NodeKey::segmentOf('P', owner->element->Properties().keyAt(index));
    if (const ObjectTreeNode *node = childWithSegment(owner, segment)) {
        const QModelIndex changed = indexOfNode(node);
        emit dataChanged(changed, changed, { Qt::DisplayRole });
    }
}

void ObjectTreeModel::propertyAdded(const QByteArray &ownerKey, int index)
{
    ObjectTreeNode *owner = nodeShowing(ownerKey);
    if (!owner || owner->kind != ObjectTreeNode::Element)
        return;
    const clsProperties &properties = owner->element->Properties();
    const QByteArray key = properties.keyAt(index).toByteArray();
    const QByteArray segment = NodeKey::segmentOf('P', key);
    makeChildrenWithout(owner, [&segment](const ObjectTreeNode &n) { return n.segment == segment; });
    int row = int(owner->children.size());
    if (index + 1 < properties.Count()) {
        const QByteArray next = NodeKey::segmentOf('P', properties.keyAt(index + 1));
        if (const ObjectTreeNode *following = childWithSegment(owner, next))
            row = following->row;
    }
    insertNode(owner, row, propertyNode(owner, key));
}

void ObjectTreeModel::propertyAboutToBeRemoved(const QByteArray &ownerKey, int index)
{
    ObjectTreeNode *owner = nodeShowing(ownerKey);
    if (!owner || owner->kind != ObjectTreeNode::Element)
        return;
    makeChildren(owner);
    const QByteArray segment = NodeKey::segmentOf('P', owner->element->Properties().keyAt(index));
    if (const ObjectTreeNode *node = childWithSegment(owner, segment))
        removeNode(owner, node->row);
}

void ObjectTreeModel::elementInserted(const QByteArray &parentKey, int index)
{
    ObjectTreeNode *owner = nodeShowing(parentKey);
    const clsElements *children = mSkin.childrenOf(parentKey);
    if (!owner || !children)
        return;
    clsElement *element = children->at(index);
    const bool top = owner == mRoot.get();
    if (top && mLayersOnly && !isShownInLayersOnly(*element))
        return;
    makeChildrenWithout(owner, [element](const ObjectTreeNode &n) { return n.element == element; });
    int row = int(owner->children.size());
    for (int next = index + 1; next < children->Count() && row == int(owner->children.size()); ++next) {
        const int at = rowOfElement(owner, children->at(next));
        if (at >= 0)
            row = at;
    }
    const char letter = top ? NodeKey::blockLetter(*element) : NodeKey::childLetter(*element);
    insertNode(owner, row, elementNode(owner, element, letter));
}

void ObjectTreeModel::elementAboutToBeRemoved(const QByteArray &parentKey, int index)
{
    ObjectTreeNode *owner = nodeShowing(parentKey);
    const clsElements *children = mSkin.childrenOf(parentKey);
    if (!owner || !children)
        return;
    makeChildren(owner);
    const int row = rowOfElement(owner, children->at(index));
    if (row >= 0)
        removeNode(owner, row);
}

int ObjectTreeModel::rowOfElement(const ObjectTreeNode *owner, const clsElement *element) const
{
    for (const auto &child : owner->children) {
        if (child->kind == ObjectTreeNode::Element && child->element == element)
            return child->row;
    }
    return -1;
}

void ObjectTreeModel::insertNode(ObjectTreeNode *owner, int row, std::unique_ptr<ObjectTreeNode> node)
{
    row = std::clamp(row, 0, int(owner->children.size()));
    beginInsertRows(indexOfNode(owner), row, row);
    owner->children.insert(owner->children.begin() + row, std::move(node));
    owner->renumberChildren(row);
    endInsertRows();
}

void ObjectTreeModel::removeNode(ObjectTreeNode *owner, int row)
{
    beginRemoveRows(indexOfNode(owner), row, row);
    owner->children.erase(owner->children.begin() + row);
    owner->renumberChildren(row);
    endRemoveRows();
}

// ---- reading -----------------------------------------------------------------------------

NodeTarget ObjectTreeModel::ResolveNodeKey(const QByteArray &key) const
{
    return NodeKey::ResolveNodeKey(mDocument, key);
}

NodeTarget ObjectTreeModel::resolve(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    if (!node || node->kind == ObjectTreeNode::Headers)
        return {};
    const QByteArray key = keyOf(node);
    if (node->underHeaders())
        return NodeKey::ResolveHeaderNodeKey(mDocument, key);
    return NodeKey::ResolveNodeKey(mDocument, key);
}

QByteArray ObjectTreeModel::keyOf(const ObjectTreeNode *node)
{
    // The "HEADERS" node gives its children no part of its own.
    if (!node->parent || node->parent->kind == ObjectTreeNode::Root
        || node->parent->kind == ObjectTreeNode::Headers)
        return node->segment;
    return NodeKey::under(NodeKey(keyOf(node->parent)), node->segment);
}

QByteArray ObjectTreeModel::nodeKey(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    return node ? keyOf(node) : QByteArray();
}

QString ObjectTreeModel::nodeText(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    if (!node)
        return {};
    switch (node->kind) {
    case ObjectTreeNode::Headers:
        return QLatin1String(kHeadersText);
    case ObjectTreeNode::Element:
        return node->element ? NodeKey::elementText(*node->element, mDocument.codec()) : QString();
    case ObjectTreeNode::Property: {
        if (!node->element)
            return {};
        const clsProperty property = node->element->Properties().Find(node->segment.mid(1));
        return property ? NodeKey::propertyText(property, mDocument.codec()) : QString();
    }
    case ObjectTreeNode::Root:
        break;
    }
    return {};
}

char ObjectTreeModel::nodeLetter(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    if (!node || node->kind == ObjectTreeNode::Headers || node->kind == ObjectTreeNode::Root)
        return 0;
    if (node->kind == ObjectTreeNode::Element && node->parent && node->parent->kind == ObjectTreeNode::Headers)
        return 0;
    return NodeKey::letterOf(node->segment);
}

ObjectTreeNode::Kind ObjectTreeModel::nodeKind(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    return node ? node->kind : ObjectTreeNode::Root;
}

ObjectTreeNode *ObjectTreeModel::childWithSegment(ObjectTreeNode *node, QByteArrayView segment) const
{
    makeChildren(node);
    for (const auto &child : node->children) {
        if (sameSegment(child->segment, segment))
            return child.get();
    }
    return nullptr;
}

ObjectTreeNode *ObjectTreeModel::nodeOfKey(const QByteArray &key) const
{
    // The empty key names a header variable without a name, when there is one.
    const QList<QByteArray> segments = key.isEmpty() ? QList<QByteArray>{ key } : NodeKey(key).segments();
    ObjectTreeNode *at = childWithSegment(mRoot.get(), segments.first());
    if (!at) {
        if (ObjectTreeNode *headers = childWithSegment(mRoot.get(), kHeadersText))
            at = childWithSegment(headers, segments.first());
    }
    for (int i = 1; i < segments.size() && at; ++i)
        at = childWithSegment(at, segments.at(i));
    return at;
}

QModelIndex ObjectTreeModel::indexOfKey(const QByteArray &key) const
{
    return indexOfNode(nodeOfKey(key));
}

QModelIndex ObjectTreeModel::indexOfElement(const clsElement *element, const QModelIndex &parent) const
{
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node || !element)
        return {};
    makeChildren(node);
    for (const auto &child : node->children) {
        if (child->kind == ObjectTreeNode::Element && child->element == element)
            return createIndex(child->row, 0, child.get());
    }
    return {};
}

ObjectTreeNode *ObjectTreeModel::nodeOf(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    return static_cast<ObjectTreeNode *>(index.internalPointer());
}

QModelIndex ObjectTreeModel::indexOfNode(const ObjectTreeNode *node) const
{
    if (!node || node == mRoot.get() || !node->parent)
        return {};
    return createIndex(node->row, 0, node);
}

QModelIndex ObjectTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (column != 0 || row < 0)
        return {};
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return {};
    makeChildren(node);
    if (row >= int(node->children.size()))
        return {};
    return createIndex(row, 0, node->children[size_t(row)].get());
}

QModelIndex ObjectTreeModel::parent(const QModelIndex &child) const
{
    const ObjectTreeNode *node = nodeOf(child);
    if (!node)
        return {};
    return indexOfNode(node->parent);
}

int ObjectTreeModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return 0;
    makeChildren(node);
    return int(node->children.size());
}

int ObjectTreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

// Answered without making the children, so unfolded nodes cost nothing.
bool ObjectTreeModel::hasChildren(const QModelIndex &parent) const
{
    const ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return false;
    if (node->childrenMade)
        return !node->children.empty();
    return node->element
        && (node->element->Properties().Count() > 0 || node->element->subElementCount() > 0);
}

QVariant ObjectTreeModel::data(const QModelIndex &index, int role) const
{
    if (!nodeOf(index))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return nodeText(index);
    case NodeKeyRole:
        return nodeKey(index);
    case NodeKindRole:
        return int(nodeKind(index));
    default:
        return {};
    }
}
