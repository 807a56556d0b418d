// The page itself: its parts, the address that names what is shown, and the keys that work everywhere.

// A list or tree to choose from, with a search, beside what is chosen.
class SplitView {
  // `addressOf(i)` names an item; `detailsOf(i)` gives the elements that show it.
  constructor(section, label, items, addressOf, detailsOf) {
    Object.assign(this, { section, items, addressOf, detailsOf });
    const id = section.id;
    this.search = make('input', { type: 'search', id: id + '-search', placeholder: 'Search  /', autocomplete: 'off',
      spellcheck: 'false', 'aria-label': 'Search in: ' + label, 'aria-controls': id + '-tree' });
    this.status = make('p', { class: 'status', role: 'status' });
    const host = make('div', { class: 'tree', id: id + '-tree' });
    const button = (text, title, open) => {
      const element = make('button', { type: 'button', title }, text);
      element.addEventListener('click', () => this.tree.foldAll(open));
      return element;
    };
    const hasLevels = items.parent.some((parent) => parent >= 0);
    this.detail = make('div', { class: 'detail', tabindex: -1, 'aria-live': 'off' });
    this.back = make('button', { type: 'button', class: 'back' }, 'Back to the list');
    this.back.addEventListener('click', () => this.close());
    section.append(
      make('div', { class: 'list' },
        make('div', { class: 'tools' }, this.search,
          hasLevels ? button('Unfold', 'Unfold everything', true) : null,
          hasLevels ? button('Fold', 'Fold everything', false) : null),
        this.status, host),
      make('div', { class: 'detail-frame' }, this.back, this.detail));
    this.tree = new Tree(host, label, items, (i) => this.show(i), () => this.openDetail());
    this.search.addEventListener('input', () => this.onSearch());
    this.search.addEventListener('keydown', (event) => this.onSearchKey(event));
    section.addEventListener('keydown', (event) => {
      if (event.key === 'Escape' && this.section.classList.contains('open')) this.close();
    });
    if (items.count === 0) this.detail.append(make('p', { class: 'muted' }, 'There are none.'));
  }

  // Shows an item that the address does not name yet.
  show(i) {
    this.render(i);
    replaceAddress(this.addressOf(i));
  }

  render(i) {
    this.detail.replaceChildren(...this.detailsOf(i).filter((element) => element !== null));
    this.detail.scrollTop = 0;
  }

  // Shows an item that the address names; without one, what was shown last, or the first.
  go(i) {
    if (this.items.count === 0) return;
    if (i >= 0) {
      this.tree.reveal(i, true);
      this.render(i);
      this.section.classList.add('open');
      return;
    }
    this.section.classList.remove('open');
    const shownBefore = this.tree.selected;
    this.tree.select(shownBefore < 0 ? 0 : shownBefore, true);
    if (shownBefore < 0) this.render(0);
  }

  // Where there is room for one of the two only, the detail takes the place of the list, and the list takes it back.
  openDetail() {
    this.section.classList.add('open');
    if (getComputedStyle(this.back).display !== 'none') this.back.focus();
  }

  close() {
    this.section.classList.remove('open');
    this.tree.select(this.tree.selected, true);
    this.tree.host.focus();
  }

  onSearch() {
    const text = this.search.value;
    const { matches, first } = this.tree.search(text);
    this.status.textContent = text.trim() === '' ? ''
      : matches === 0 ? 'Nothing has this in its name.'
      : count(matches, 'match', 'matches') + ' of ' + this.items.count.toLocaleString(language);
    if (first >= 0) this.tree.select(first);
  }

  onSearchKey(event) {
    if (event.key === 'Enter') {
      const next = this.tree.nextMatch(event.shiftKey);
      if (next >= 0) this.tree.select(next);
    } else if (event.key === 'ArrowDown') {
      this.tree.host.focus();
    } else if (event.key === 'Escape' && this.search.value !== '') {
      this.search.value = '';
      this.onSearch();
    } else if (event.key === 'Escape') {
      this.tree.host.focus();
    } else {
      return;
    }
    event.preventDefault();
    event.stopPropagation();
  }
}

// Browsers stop pages that change their address many times a second, as a held arrow key would.
const addressDelay = 200;  // milliseconds
let addressTimer = 0;

function replaceAddress(address) {
  clearTimeout(addressTimer);
  const former = location.hash;
  addressTimer = setTimeout(() => {
    // Someone may have followed a link meanwhile, and the page may not have been told yet.
    if (location.hash === former) history.replaceState(null, '', address);
  }, addressDelay);
}

function nodeItems(definition) {
  const { nodes } = definition;
  return {
    count: nodes.length,
    parent: Int32Array.from(nodes, (node) => node.parent),
    name: (i) => nodes[i].name,
    key: (i) => nodes[i].cookie,
    icon: (i) => definition.picture(nodes[i].icon, 'small'),
    note: (i) => nodes[i].type,
    marked: (i) => definition.remarksOn('node', nodes[i].cookie).length > 0,
  };
}

function dialogItems(definition) {
  const { dialogs } = definition;
  return {
    count: dialogs.length,
    parent: new Int32Array(dialogs.length).fill(-1),
    name: (i) => dialogs[i].name,
    key: (i) => dialogs[i].cookie,
    icon: (i) => definition.picture(dialogs[i].icon, 'small'),
    note: (i) => dialogs[i].cookie,
    marked: (i) => definition.remarksOn('dialog', dialogs[i].cookie).length > 0,
  };
}

// The files below the headings of their kinds.
function fileItems(definition, details) {
  const rows = [];
  const parents = [];
  const groups = [['icon', 'Icon files', definition.icons], ['code', 'Code files', definition.codeFiles]];
  for (const [kind, title, files] of groups) {
    if (files.length === 0) continue;
    const group = rows.push({ title, kind, files }) - 1;
    parents.push(-1);
    for (const file of files) {
      rows.push({ kind, file });
      parents.push(group);
    }
  }
  return {
    rows,
    count: rows.length,
    parent: Int32Array.from(parents),
    name: (i) => rows[i].title || details.fileName(rows[i].kind, rows[i].file.cookie),
    key: (i) => rows[i].file ? rows[i].file.cookie : '',
    icon: (i) => rows[i].kind === 'icon' && rows[i].file ? rows[i].file.small.picture : false,
    note: (i) => !rows[i].file ? rows[i].files.length.toLocaleString(language)
      : rows[i].kind === 'code' ? sizeText(rows[i].file.bytes) : '',
    marked: (i) => rows[i].file !== undefined && definition.remarksOn(rows[i].kind + ' file', rows[i].file.cookie).length > 0,
  };
}

function showFindings(section, definition) {
  const { remarks } = definition;
  const errors = remarks.filter((remark) => remark.severity === 'error').length;
  const summary = remarks.length === 0 ? 'Nothing was found.'
    : count(errors, 'error', 'errors') + ', ' + count(remarks.length - errors, 'warning', 'warnings') + '.';
  const page = make('div', { class: 'single' }, make('h2', null, 'Findings'), make('p', { class: 'muted' }, summary));
  section.append(page);
  fillListIn(page, make('ul', { class: 'remarks' }), remarks, (remark) => {
    const target = definition.target(remark);
    return make('li', { class: remark.severity },
      make('div', { class: 'remark-head' }, severityElement(remark), make('code', null, shown(remark.code)),
        remark.line > 0 ? make('span', { class: 'muted' }, 'line ' + remark.line) : null,
        target ? make('a', { href: target }, remark.object + ' ' + remark.cookie) : null),
      make('div', null, shown(remark.explanation)));
  });
}

function showStrips(section, definition, details) {
  const { strips } = definition;
  const page = make('div', { class: 'single' }, make('h2', null, 'Image strips'));
  section.append(page);
  if (strips === null || strips.reason) {
    page.append(make('p', { class: 'message' }, strips === null ? 'There are no icon files, so there are no strips.'
      : 'The strips are not shown: ' + shown(strips.reason)));
    return;
  }
  page.append(make('p', { class: 'muted' },
    'All icons side by side, in the order of their cookies, as a host gets them. The board shows through where they are transparent.'));
  for (const [title, { width, height, picture }] of [['Small icons', strips.small], ['Large icons', strips.large]]) {
    page.append(make('figure', { class: 'strip' },
      make('div', { class: 'scroll', tabindex: 0, role: 'region', 'aria-label': title },
        make('img', { class: 'board pixels', src: picture, width: 2 * width, height: 2 * height,
          alt: title + ', one beside the other' })),
      make('figcaption', null, title + ', ' + width.toLocaleString(language) + ' \u00d7 ' + height +
        ' pixels, shown at twice their size')));
  }
  page.append(make('h3', null, 'Places'));
  fillListIn(page, make('ol', { class: 'links places', start: 0 }), definition.icons, (icon) =>
    make('li', null, details.fileLink('icon', icon.cookie)));
}

function start() {
  const definition = new Definition(JSON.parse(document.getElementById('definition').textContent));
  const details = new Details(definition);
  const element = (id) => document.getElementById(id);

  document.title = shown(definition.name());
  element('title').append(nameElement(definition.name()));
  element('subtitle').append(make('bdi', null, shown(definition.file)),
    definition.form === 'project' ? ', project file' : ', object image');
  const titleIcon = definition.nodes.length > 0 ? definition.nodes[0].icon : '0';
  if (definition.picture(titleIcon, 'large')) {
    element('title-icon').src = definition.picture(titleIcon, 'large');
    element('title-icon').hidden = false;
  }
  if (definition.picture(titleIcon, 'small')) element('page-icon').href = definition.picture(titleIcon, 'small');
  const counts = { nodes: definition.nodes.length, dialogs: definition.dialogs.length,
    files: definition.icons.length + definition.codeFiles.length, findings: definition.remarks.length };
  for (const [view, number] of Object.entries(counts)) {
    element('count-' + view).textContent = number.toLocaleString(language);
  }
  if (definition.remarks.length > 0) {
    element('count-findings').className = definition.remarks.some((remark) => remark.severity === 'error') ? 'error' : 'warning';
  }

  // A part is made when it is first looked at.
  const parts = {};
  const objectView = (view, label, items, records) => () => new SplitView(element('view-' + view), label, items(definition),
    (i) => '#' + view + '/' + records[i].cookie, (i) => details.ofObject(definition.objects.get(records[i].cookie)));
  const makers = {
    nodes: objectView('nodes', 'Console tree', nodeItems, definition.nodes),
    dialogs: objectView('dialogs', 'Dialogs', dialogItems, definition.dialogs),
    files: () => {
      const items = fileItems(definition, details);
      return new SplitView(element('view-files'), 'Files', items,
        (i) => items.rows[i].file ? fileAddress(items.rows[i].kind, items.rows[i].file.cookie) : '#files',
        (i) => {
          const { kind, file, title, files } = items.rows[i];
          if (!file) return details.ofGroup(title, kind === 'icon' ? count(files.length, 'icon file', 'icon files')
            : count(files.length, 'code file', 'code files') + ', ' +
              sizeText(files.reduce((sum, each) => sum + (each.bytes || 0), 0)));
          return kind === 'icon' ? details.ofIcon(file) : details.ofCodeFile(file);
        });
    },
    findings: () => showFindings(element('view-findings'), definition),
    strips: () => showStrips(element('view-strips'), definition, details),
  };

  const placeOf = (view, part, names) => {
    if (view === 'files') {
      const [kind, cookie] = names;
      return part.items.rows.findIndex((row) => row.kind === kind && row.file && row.file.cookie === cookie);
    }
    const object = definition.objects.get(names[0]);
    return object && object.view === view ? object.index : -1;
  };

  let current = null;
  const route = () => {
    clearTimeout(addressTimer);
    const [name, ...rest] = location.hash.slice(1).split('/');
    const view = makers[name] ? name : 'nodes';
    for (const other of Object.keys(makers)) element('view-' + other).hidden = other !== view;
    for (const link of document.querySelectorAll('nav a')) {
      if (link.hash === '#' + view) link.setAttribute('aria-current', 'page');
      else link.removeAttribute('aria-current');
    }
    if (!(view in parts)) parts[view] = makers[view]();
    current = parts[view];
    if (current) current.go(rest.length > 0 ? placeOf(view, current, rest) : -1);
  };

  addEventListener('hashchange', route);
  addEventListener('keydown', (event) => {
    const isTyping = event.target.matches('input, textarea');
    if (event.key !== '/' || isTyping || event.ctrlKey || event.altKey || event.metaKey || !current) return;
    current.section.classList.remove('open');
    current.search.focus();
    current.search.select();
    event.preventDefault();
  });
  // "Skip to the content" leads to what is shown now, and is no address of its own.
  document.querySelector('.skip').addEventListener('click', (event) => {
    (current ? current.tree.host : element('content')).focus();
    event.preventDefault();
  });
  route();
  performance.mark('usable');
}

start();
