// What the page of reported runs does beside being read: it opens what a link leads to, unfolds
// everything for a printer, and sorts and filters the table of runs.
'use strict';

// --- Folding ---

function reveal(id) {
    let details = document.getElementById(id)?.closest('details');
    while (details) {
        details.open = true;
        details = details.parentElement.closest('details');
    }
}

function revealAddressed() {
    const id = location.hash.slice(1);
    reveal(id);
    document.getElementById(id)?.scrollIntoView();
}

document.addEventListener('click', event => {
    const link = event.target.closest('a[href^="#"]');
    if (link) {
        reveal(link.getAttribute('href').slice(1));
    }
});
addEventListener('hashchange', revealAddressed);
revealAddressed();

let unfolded = [];
addEventListener('beforeprint', () => {
    unfolded = [...document.querySelectorAll('details:not([open])')];
    unfolded.forEach(details => { details.open = true; });
});
addEventListener('afterprint', () => unfolded.forEach(details => { details.open = false; }));

// --- The table of runs ---

const WORDS = new Intl.Collator('en', {numeric: true});

// Cells sort by the number that they name, others by their words.
function compareCells(left, right) {
    return left.dataset.sort === undefined
        ? WORDS.compare(left.textContent, right.textContent)
        : left.dataset.sort - right.dataset.sort;
}

function sortBy(heading) {
    const place = heading.cellIndex;
    const order = heading.ariaSort === 'ascending' ? 'descending' : 'ascending';
    const sign = order === 'ascending' ? 1 : -1;
    const body = heading.closest('table').tBodies[0];
    const rows = [...body.rows];
    rows.sort((left, right) => sign * compareCells(left.cells[place], right.cells[place]));
    body.append(...rows);
    for (const each of heading.parentElement.cells) {
        each.ariaSort = each === heading ? order : 'none';
    }
}

function offerSorting(heading) {
    const button = document.createElement('button');
    button.type = 'button';
    button.append(...heading.childNodes);
    button.addEventListener('click', () => sortBy(heading));
    heading.append(button);
}

function offerFilter(form, rows) {
    const {text, outcome, shown} = form.elements;
    const filter = () => {
        const words = text.value.toLowerCase().split(/\s+/);
        for (const row of rows) {
            const content = row.textContent.toLowerCase();
            row.hidden = !words.every(word => content.includes(word)) ||
                (outcome.value !== '' && outcome.value !== row.dataset.outcome);
        }
        shown.value = `${rows.filter(row => !row.hidden).length} of ${rows.length} shown`;
    };
    form.addEventListener('input', filter);
    form.addEventListener('submit', event => event.preventDefault());
    form.hidden = false;
    filter();
}

const runs = document.getElementById('runs');
if (runs) {
    [...runs.tHead.rows[0].cells].forEach(offerSorting);
    offerFilter(document.getElementById('filter'), [...runs.tBodies[0].rows]);
}
