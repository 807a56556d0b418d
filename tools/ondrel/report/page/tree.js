// A tree to fold, to search and to walk through with the keyboard. Only the rows that can be seen are in the document,
// so that it may have a million of them, and its levels are numbers, so that it may be of any depth.

const deepestIndent = 9;  // levels below it stand at its place and say their number
const rowsAround = 8;     // that are drawn above and below what can be seen

class Tree {
  // `items`: count, parent (the place of each item's parent, or -1; parents stand before their children, and an item's
  // whole subtree before its next sibling), name(i), key(i) (what else finds it), icon(i) (an address, or null; `false`
  // for none), note(i), marked(i). `onSelect(i)` is called for each selection, `onOpen(i)` when one is to be looked at.
  constructor(host, label, items, onSelect, onOpen) {
    Object.assign(this, { host, items, onSelect, onOpen });
    this.measure();
    this.open = new Uint8Array(items.count);
    this.searchOpen = new Uint8Array(items.count);
    this.kept = null;  // while searching: the matches and what lies above them
    this.query = '';
    this.selected = -1;
    this.typed = '';
    this.drawn = new Map();  // item: its row
    const opening = items.count <= 300 ? items.count : 0;
    for (let i = 0; i < items.count; ++i) this.open[i] = i < opening || this.depth[i] === 0 ? 1 : 0;

    this.rows = make('div', { role: 'presentation' });
    host.append(this.rows);
    host.setAttribute('role', 'tree');
    host.setAttribute('aria-label', label);
    host.tabIndex = 0;
    host.addEventListener('scroll', () => this.draw(), { passive: true });
    host.addEventListener('keydown', (event) => this.onKey(event));
    host.addEventListener('click', (event) => this.onClick(event));
    new ResizeObserver(() => this.draw()).observe(host);
    this.list();
  }

  // For each item: its depth, the place behind its subtree, its position among its siblings and their number.
  measure() {
    const { count, parent } = this.items;
    this.depth = new Int32Array(count);
    this.end = new Int32Array(count);
    this.position = new Int32Array(count);
    this.children = new Int32Array(count + 1);  // the last is the number of top-level items
    for (let i = 0; i < count; ++i) {
      const above = parent[i] < 0 ? count : parent[i];
      if (parent[i] >= 0) this.depth[i] = this.depth[parent[i]] + 1;
      this.position[i] = ++this.children[above];
      this.end[i] = i + 1;
    }
    for (let i = count - 1; i >= 0; --i) {
      if (parent[i] >= 0) this.end[parent[i]] = Math.max(this.end[parent[i]], this.end[i]);
    }
  }

  isOpen(i) {
    return (this.kept ? this.searchOpen : this.open)[i] === 1;
  }

  hasChildren(i) {
    return this.end[i] > i + 1;
  }

  // Lists the items that can be scrolled to, and draws those that can be seen.
  list() {
    const visible = [];
    for (let i = 0; i < this.items.count;) {
      const isKept = !this.kept || this.kept[i] === 1;
      if (isKept) visible.push(i);
      i = isKept && this.isOpen(i) ? i + 1 : this.end[i];
    }
    this.visible = visible;
    this.drawn.clear();
    this.draw(true);
  }

  draw(anew) {
    const style = getComputedStyle(this.host);
    const rowHeight = parseFloat(style.getPropertyValue('--row')) || 30;
    const first = Math.max(0, Math.floor(this.host.scrollTop / rowHeight) - rowsAround);
    const behind = Math.min(this.visible.length,
      Math.ceil((this.host.scrollTop + this.host.clientHeight) / rowHeight) + rowsAround);
    if (!anew && first === this.first && behind === this.behind && rowHeight === this.rowHeight) return;
    Object.assign(this, { first, behind, rowHeight });
    const drawn = new Map();
    for (let row = first; row < behind; ++row) {
      const i = this.visible[row];
      drawn.set(i, this.drawn.get(i) || this.makeRow(i));
    }
    this.drawn = drawn;
    this.rows.style.height = this.visible.length * rowHeight + 'px';
    this.rows.style.paddingTop = first * rowHeight + 'px';
    this.rows.replaceChildren(...drawn.values());
    this.markSelected();
  }

  makeRow(i) {
    const { items } = this;
    const level = this.depth[i];
    const twist = make('span', { class: this.hasChildren(i) ? 'twist' : 'twist none', 'aria-hidden': 'true' });
    const icon = items.icon(i);
    const row = make('div', {
      role: 'treeitem',
      id: this.host.id + '-' + i,
      class: 'row' + (this.kept && this.kept[i] === 1 && !this.matches[i] ? ' above' : ''),
      'aria-level': level + 1,
      'aria-posinset': this.position[i],
      'aria-setsize': this.children[items.parent[i] < 0 ? items.count : items.parent[i]],
      'aria-expanded': this.hasChildren(i) ? String(this.isOpen(i)) : null,
      'aria-selected': 'false',
    },
    twist,
    icon === false ? null : pictureElement(icon, 16, 'icon'),
    level > deepestIndent ? make('span', { class: 'level' }, 'level ' + (level + 1)) : null,
    make('span', { class: 'name' }, nameElement(items.name(i), this.query)),
    items.marked(i) ? make('span', { class: 'dot', title: 'with findings' }, make('span', { class: 'unseen' }, ', with findings')) : null,
    make('span', { class: 'note' }, items.note(i)));
    row.style.setProperty('--level', Math.min(level, deepestIndent));
    row.dataset.item = i;
    return row;
  }

  markSelected() {
    for (const [i, row] of this.drawn) row.setAttribute('aria-selected', String(i === this.selected));
    if (this.drawn.has(this.selected)) {
      this.host.setAttribute('aria-activedescendant', this.host.id + '-' + this.selected);
    } else {
      this.host.removeAttribute('aria-activedescendant');
    }
  }

  // Selects an item that can be scrolled to, and brings it into sight.
  select(i, quietly) {
    this.selected = i;
    const row = this.rowOf(i);
    const { host, rowHeight } = this;
    if (row >= 0 && host.clientHeight > 0) {
      if (row * rowHeight < host.scrollTop) host.scrollTop = row * rowHeight;
      const bottom = (row + 1) * rowHeight - host.clientHeight;
      if (bottom > host.scrollTop) host.scrollTop = bottom;
    }
    this.draw();
    this.markSelected();
    if (!quietly) this.onSelect(i);
  }

  // Opens everything above an item and selects it.
  reveal(i, quietly) {
    if (this.rowOf(i) < 0) {
      if (this.kept && !this.kept[i]) this.search('');
      const open = this.kept ? this.searchOpen : this.open;
      for (let above = this.items.parent[i]; above >= 0; above = this.items.parent[above]) open[above] = 1;
      this.list();
    }
    this.select(i, quietly);
  }

  // The row of an item, or -1. Rows are in the order of the items.
  rowOf(i) {
    let low = 0;
    let high = this.visible.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.visible[middle] < i) low = middle + 1;
      else high = middle;
    }
    return this.visible[low] === i ? low : -1;
  }

  fold(i, open) {
    if (!this.hasChildren(i) || this.isOpen(i) === open) return;
    (this.kept ? this.searchOpen : this.open)[i] = open ? 1 : 0;
    const hidesSelected = !open && this.selected > i && this.selected < this.end[i];
    this.list();
    if (hidesSelected) this.select(i);
  }

  foldAll(open) {
    (this.kept ? this.searchOpen : this.open).fill(open ? 1 : 0);
    let top = this.selected;
    while (!open && top >= 0 && this.items.parent[top] >= 0) top = this.items.parent[top];
    this.list();
    if (top >= 0) this.select(top, top === this.selected);
  }

  // Shows only the items with `text` in their names, or with it for a key, and what lies above them. Gives the number
  // of matches and the first of them.
  search(text) {
    const query = text.trim().toLowerCase();
    this.query = query;
    const { count, parent } = this.items;
    if (query === '') {
      const wasSearching = this.kept !== null;
      this.kept = null;
      this.matches = null;
      if (wasSearching) {
        this.list();
        if (this.selected >= 0) this.reveal(this.selected, true);
      }
      return { matches: count, first: -1 };
    }
    if (!this.names) {
      this.names = new Array(count);
      for (let i = 0; i < count; ++i) this.names[i] = shown(this.items.name(i)).toLowerCase();
    }
    this.kept = new Uint8Array(count);
    this.matches = new Uint8Array(count);
    this.searchOpen.fill(1);
    let found = 0;
    let first = -1;
    for (let i = 0; i < count; ++i) {
      if (!this.names[i].includes(query) && this.items.key(i) !== query) continue;
      this.matches[i] = 1;
      if (found++ === 0) first = i;
      for (let above = i; above >= 0 && this.kept[above] === 0; above = parent[above]) this.kept[above] = 1;
    }
    this.host.scrollTop = 0;
    this.list();
    return { matches: found, first };
  }

  // The match behind the selected item, from the start again behind the last one; -1 without any.
  nextMatch(backwards) {
    if (!this.matches) return -1;
    const step = backwards ? -1 : 1;
    const rows = this.visible.length;
    let row = this.rowOf(this.selected);
    if (row < 0) row = backwards ? rows : -1;
    for (let tried = 0; tried < rows; ++tried) {
      row = (row + step + rows) % rows;
      if (this.matches[this.visible[row]] === 1) return this.visible[row];
    }
    return -1;
  }

  onClick(event) {
    const row = event.target.closest('[role=treeitem]');
    if (!row) return;
    const i = Number(row.dataset.item);
    if (event.target.closest('.twist') && this.hasChildren(i)) {
      this.fold(i, !this.isOpen(i));
      return;
    }
    this.select(i);
    this.onOpen(i);
  }

  onKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey || this.visible.length === 0) return;
    const row = this.rowOf(this.selected);
    const page = Math.max(1, Math.floor(this.host.clientHeight / this.rowHeight) - 1);
    const last = this.visible.length - 1;
    const go = (to) => this.select(this.visible[Math.min(Math.max(to, 0), last)]);
    const i = row < 0 ? this.visible[0] : this.selected;
    switch (event.key) {
      case 'ArrowDown': go(row + 1); break;
      case 'ArrowUp': go(row - 1); break;
      case 'PageDown': go(row + page); break;
      case 'PageUp': go(row - page); break;
      case 'Home': go(0); break;
      case 'End': go(last); break;
      case 'ArrowRight':
        if (this.hasChildren(i) && !this.isOpen(i)) this.fold(i, true);
        else if (this.hasChildren(i)) go(row + 1);
        break;
      case 'ArrowLeft':
        if (this.hasChildren(i) && this.isOpen(i)) this.fold(i, false);
        else if (this.items.parent[i] >= 0) this.select(this.items.parent[i]);
        break;
      case 'Enter': this.select(i); this.onOpen(i); break;
      case ' ': this.fold(i, !this.isOpen(i)); break;
      case '*': this.openSiblings(i); break;
      default:
        if (event.key.length !== 1 || event.key === '/') return;
        this.typeAhead(event.key);
    }
    event.preventDefault();
    event.stopPropagation();
  }

  openSiblings(i) {
    const { count, parent } = this.items;
    const above = parent[i];
    const behind = above < 0 ? count : this.end[above];
    for (let next = above + 1; next < behind; next = this.end[next]) {
      (this.kept ? this.searchOpen : this.open)[next] = 1;
    }
    this.list();
    this.select(i, true);
  }

  // Goes to the next row whose name begins with what was typed in the last moments.
  typeAhead(character) {
    clearTimeout(this.typing);
    this.typing = setTimeout(() => { this.typed = ''; }, 700);
    this.typed += character.toLowerCase();
    const rows = this.visible.length;
    const start = Math.max(0, this.rowOf(this.selected)) + (this.typed.length === 1 ? 1 : 0);
    for (let tried = 0; tried < rows; ++tried) {
      const i = this.visible[(start + tried) % rows];
      if (this.items.name(i).toLowerCase().startsWith(this.typed)) {
        this.select(i);
        return;
      }
    }
  }
}
