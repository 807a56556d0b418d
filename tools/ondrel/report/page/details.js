// What is shown of one node, dialog or file.

class Details {
  constructor(definition) {
    this.definition = definition;
  }

  // A node or dialog, as Definition.objects has it.
  ofObject(object) {
    const { record, view } = object;
    const { definition } = this;
    const icon = record.icon === '0' ? null : this.fileLink('icon', record.icon);
    const values = [
      ['Type', record.type === 'Oops!!' ? 'Oops!! (none that is known)' : record.type],
      ['Cookie', make('code', null, record.cookie)],
      ['Icon', icon],
      ['Menu script', this.codeLink(record.menuScript)],
      ['Style sheet', this.codeLink(record.styleSheet)],
      record.line ? ['Line', String(record.line)] : null,
    ];
    return [
      this.head(record.name, definition.picture(record.icon, 'large'), view === 'nodes' ? this.path(object) : 'Dialog'),
      this.remarks(kindOf(object), record.cookie),
      this.values(values),
      this.queries('Child queries', 'The queries whose results become the children of the node', record.childQueries),
      this.scripts(record.scripts),
      this.queries('Render queries', 'The queries whose results the style sheet renders', record.renderQueries),
      view === 'nodes' ? this.children(object) : null,
    ];
  }

  ofIcon(file) {
    const image = (label, { width, height, bitsPixel, picture }) => make('figure', null,
      picture
        ? make('div', { class: 'board' }, pictureElement(picture, Math.max(width, 1) * 3, 'pixels'))
        : make('div', { class: 'message' }, 'This image has no pixels that could be shown.'),
      make('figcaption', null, label + ', ' + width + ' \u00d7 ' + height + ' pixels, ' + bitsPixel + ' bits'));
    return [
      this.head(this.fileName('icon', file.cookie), file.large.picture, 'Icon file'),
      this.remarks('icon file', file.cookie),
      this.values([['Cookie', make('code', null, file.cookie)]]),
      this.part('Images', make('div', { class: 'figures' }, image('Large', file.large), image('Small', file.small))),
      this.users('icon', file.cookie),
    ];
  }

  ofCodeFile(file) {
    const { contents } = file;
    return [
      this.head(this.fileName('code', file.cookie), null, 'Code file'),
      this.remarks('code file', file.cookie),
      this.values([
        ['Cookie', make('code', null, file.cookie)],
        ['Size', sizeText(file.bytes)],
        contents.state === 'text' ? ['Read as', contents.encoding] : null,
      ]),
      this.part('Contents', ...this.contents(file)),
      this.users('code', file.cookie),
    ];
  }

  ofGroup(title, explanation) {
    return [this.head(title, null, ''), make('p', { class: 'muted' }, explanation)];
  }

  // Parts

  head(name, picture, above) {
    return make('div', { class: 'head' },
      pictureElement(picture, 32, picture ? 'pixels' : 'unseen'),
      make('div', null,
        typeof above === 'string' ? make('p', { class: 'path' }, above) : above,
        make('h2', null, nameElement(name))));
  }

  part(title, ...content) {
    return make('section', { class: 'part' }, make('h3', null, title), ...content);
  }

  values(pairs) {
    return make('dl', null, pairs.filter((pair) => pair !== null).map(([name, value]) =>
      make('div', null, make('dt', null, name), make('dd', null, value || make('span', { class: 'muted' }, 'none')))));
  }

  remarks(kind, cookie) {
    const remarks = this.definition.remarksOn(kind, cookie);
    if (remarks.length === 0) return null;
    return fillListIn(make('div', { class: 'part' }), make('ul', { class: 'remarks' }), remarks, (remark) =>
      make('li', { class: remark.severity }, severityElement(remark), ' ', shown(remark.explanation)));
  }

  // The ancestors of a node: of a deep one, the first and the last of them.
  path(object) {
    const { nodes } = this.definition;
    const ancestors = [];
    for (let above = object.record.parent; above >= 0; above = nodes[above].parent) ancestors.push(nodes[above]);
    if (ancestors.length === 0) return make('p', { class: 'path' }, 'Top-level node');
    const link = (node) => make('a', { href: '#nodes/' + node.cookie }, nameElement(node.name));
    const shownAncestors = ancestors.length > 7 ? ancestors.slice(0, 5) : ancestors.slice(0, -1);
    const steps = [link(ancestors[ancestors.length - 1])];
    if (ancestors.length > 7) {
      steps.push(make('span', null, '\u2026 ' + count(ancestors.length - 6, 'level', 'levels') + ' \u2026'));
    }
    steps.push(...shownAncestors.reverse().map(link));
    return make('p', { class: 'path' }, steps.flatMap((step) => [step, make('span', { class: 'slash' }, '/')]).slice(0, -1));
  }

  children(object) {
    const { nodes } = this.definition;
    const children = [];
    // The children are asked for once for each node that is shown, so looking at the whole list is quick enough.
    for (let i = object.index + 1; i < nodes.length && nodes[i].parent >= object.index; ++i) {
      if (nodes[i].parent === object.index) children.push(nodes[i]);
    }
    if (children.length === 0) return null;
    return fillListIn(this.part('Children'), make('ul', { class: 'links' }), children, (node) =>
      make('li', null, make('a', { class: 'with-icon', href: '#nodes/' + node.cookie },
        pictureElement(this.definition.picture(node.icon, 'small'), 16), nameElement(node.name))));
  }

  queries(title, explanation, queries) {
    if (queries.length === 0) return null;
    return fillListIn(this.part(title, make('p', { class: 'muted' }, explanation)), make('ul', { class: 'pairs' }),
      queries, (query) => make('li', null, make('span', { class: 'tag' }, nameElement(query.tag)),
        make('span', null, this.codeLink(query.file) || make('span', { class: 'muted' }, 'no file'))));
  }

  scripts(scripts) {
    if (scripts.length === 0) return null;
    return fillListIn(this.part('Scripts'), make('ol', { class: 'links' }), scripts, (script) =>
      make('li', null, this.codeLink(script) || make('span', { class: 'muted' }, 'no file')));
  }

  users(kind, cookie) {
    const uses = this.definition.uses(kind, cookie);
    if (uses.length === 0) return this.part('Used by', make('p', { class: 'muted' }, 'No node and no dialog.'));
    return fillListIn(this.part('Used by'), make('ul', { class: 'links' }), uses, ({ object, role }) =>
      make('li', null, make('a', { href: addressOf(object) }, nameElement(object.record.name)),
        make('span', { class: 'muted' }, ' ' + kindOf(object) + ', as ' + role)));
  }

  contents(file) {
    const { contents } = file;
    const message = (text) => [make('p', { class: 'message' }, text)];
    const { limits } = this.definition;
    switch (contents.state) {
      case 'binary': return message('Binary, ' + sizeText(file.bytes) + '. Only text is shown.');
      case 'leftOut':
        return message('Left out: a report shows ' + sizeText(limits.allBytes) + ' of all files together, and others took them.');
      case 'unreadable': return message('It cannot be read: ' + shown(contents.reason) + '.');
    }
    if (contents.text === '') return message('The file is empty.');
    const text = contents.text.replace(/\r\n?/g, '\n');
    const lines = text.split('\n').length - (text.endsWith('\n') ? 1 : 0);
    const numbers = Array.from({ length: lines }, (_, line) => line + 1).join('\n');
    const elements = [make('div', { class: 'code', tabindex: 0, role: 'region', 'aria-label': 'Contents of the file' },
      make('pre', { class: 'numbers', 'aria-hidden': 'true' }, numbers), make('pre', { dir: 'ltr' }, text))];
    if (turningCharacters.test(text)) {
      elements.unshift(...message('Characters in this text change its reading direction: it may not say what it seems to.'));
    }
    if (file.bytes !== null && contents.shownBytes < file.bytes) {
      elements.push(...message('Cut here: ' + sizeText(contents.shownBytes) + ' of ' + sizeText(file.bytes) +
        ' are shown. A report shows ' + sizeText(limits.fileBytes) + ' of a file, and ' + sizeText(limits.allBytes) +
        ' of all files together.'));
    }
    return elements;
  }

  // Files by their names

  fileName(kind, cookie) {
    const file = this.definition.files[kind].get(cookie);
    if (file.path !== null) return file.path;
    return (kind === 'icon' ? 'Icon file ' : 'Code file ') + cookie;
  }

  fileLink(kind, cookie) {
    if (!this.definition.files[kind].has(cookie)) {
      return make('span', { class: 'missing' }, make('code', null, cookie), ' (no such file)');
    }
    return make('a', { class: kind === 'icon' ? 'with-icon' : null, href: fileAddress(kind, cookie) },
      kind === 'icon' ? pictureElement(this.definition.picture(cookie, 'small'), 16) : null,
      nameElement(this.fileName(kind, cookie)));
  }

  // Null for none.
  codeLink(cookie) {
    return cookie === '0' ? null : this.fileLink('code', cookie);
  }
}

function fillListIn(parent, list, items, render) {
  parent.append(list);
  fillList(list, items, render);
  return parent;
}

function severityElement(remark) {
  return make('span', { class: 'severity' }, remark.severity === 'error' ? 'Error' : 'Warning');
}
